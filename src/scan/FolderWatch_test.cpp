#include "scan/FolderWatch.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <sys/mount.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "scan/ScanDiff.h"
#include "support/ForkedChild.h"
#include "support/PrivateMounts.h"
#include "support/SystemCallTrace.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;

constexpr std::int64_t KiB = 1024;
constexpr std::int64_t MiB = 1024 * KiB;

FolderSnapshot snapshotOf(const TempTree& tree) {
  return FolderWatch::snapshot(tree.path());
}

// The reported growth when `change` changes `tree`.
template <class Change>
std::vector<ScanDelta> growth(TempTree& tree, const Change& change) {
  const FolderSnapshot before = snapshotOf(tree);
  change();
  return ScanDiff::compare(before.sizes, snapshotOf(tree).sizes, MiB);
}

// --- A snapshot ---------------------------------------------------------------------------------

TEST(FolderWatchSnapshot, each_child_is_measured_with_its_whole_contents) {
  const TempTree tree(R"(
    Movies/
      film 1M
      old/
        reel-# 12K x3
    note 8K
    empty/
    nothing
    pipe fifo
  )");
  EXPECT_EQ(snapshotOf(tree), (FolderSnapshot{tree.path(),
                                              {{tree.at("Movies"), 1 * MiB + 36 * KiB},
                                               {tree.at("note"), 8 * KiB},
                                               {tree.at("empty"), 0},
                                               {tree.at("nothing"), 0},
                                               {tree.at("pipe"), 0}}}));
}

TEST(FolderWatchSnapshot, hidden_items_are_counted) {
  const TempTree tree(R"(
    .hidden/
      .film 64K
    .note 4K
  )");
  EXPECT_EQ(snapshotOf(tree).sizes,
            (PathSizes{{tree.at(".hidden"), 64 * KiB}, {tree.at(".note"), 4 * KiB}}));
}

TEST(FolderWatchSnapshot, the_bytes_on_disk_are_counted_and_not_the_length) {
  const TempTree tree(R"(
    sparse sparse=2048G
    short 10
    folder/
      sparse sparse=2048G
      film 4K
  )");
  EXPECT_EQ(snapshotOf(tree).sizes, (PathSizes{{tree.at("sparse"), 0},
                                               {tree.at("short"), tree.allocated("short")},
                                               {tree.at("folder"), 4 * KiB}}));
}

TEST(FolderWatchSnapshot, links_are_left_out) {
  const TempTree tree(R"(
    folder/
      film 1M
      to-note -> ../note
      to-folder -> ../folder
    note 1M
    to-folder -> folder
    to-note -> note
    to-nothing -> gone
    to-itself -> to-itself
  )");
  EXPECT_EQ(snapshotOf(tree).sizes,
            (PathSizes{{tree.at("folder"), 1 * MiB}, {tree.at("note"), 1 * MiB}}));
}

TEST(FolderWatchSnapshot, a_link_given_as_the_folder_is_followed) {
  const TempTree tree(R"(
    folder/
      note 8K
    link -> folder
  )");
  const FolderSnapshot behind{tree.at("folder"), {{tree.at("folder/note"), 8 * KiB}}};
  EXPECT_EQ(FolderWatch::snapshot(tree.at("link")), behind);
  EXPECT_EQ(FolderWatch::snapshot(tree.at("link/")), behind);
  EXPECT_EQ(FolderWatch::snapshot(tree.at("folder/../folder//")), behind);
}

TEST(FolderWatchSnapshot, a_package_counts_with_its_own_entry_only) {
  const TempTree tree(R"(
    Tool.app/
      binary 3M
    Family.PhotosLibrary/
      originals/
        photo 3M
    disk.sparsebundle/
      bands/
        0 3M
  )");
  PathSizes expected;
  for (const char* name : {"Tool.app", "Family.PhotosLibrary", "disk.sparsebundle"}) {
    expected[tree.at(name)] = tree.length(name);
    ASSERT_GT(tree.length(name), 0) << name;
  }
  EXPECT_EQ(snapshotOf(tree).sizes, expected);
}

TEST(FolderWatchSnapshot, the_contents_of_a_package_inside_a_child_are_counted) {
  const TempTree tree(R"(
    folder/
      Tool.app/
        binary 3M
  )");
  EXPECT_EQ(snapshotOf(tree).sizes, (PathSizes{{tree.at("folder"), 3 * MiB}}));
}

TEST(FolderWatchSnapshot, a_file_named_like_a_package_is_a_file) {
  const TempTree tree("Tool.app 3M\nSparse.app sparse=1G");
  EXPECT_EQ(snapshotOf(tree).sizes,
            (PathSizes{{tree.at("Tool.app"), 3 * MiB}, {tree.at("Sparse.app"), 0}}));
}

TEST(FolderWatchSnapshot, at_most_8000_items_of_a_child_are_measured) {
  const TempTree tree(R"(
    just/
      film-#### 4K x8000
    more/
      film-#### 4K x8001
    nested/
      folder/
        film-#### 4K x8000
    other/
      film 4K
  )");
  const PathSizes sizes = snapshotOf(tree).sizes;
  EXPECT_EQ(sizes, (PathSizes{{tree.at("just"), 8000 * 4 * KiB},
                              {tree.at("more"), 8000 * 4 * KiB},
                              {tree.at("nested"), 7999 * 4 * KiB},
                              {tree.at("other"), 4 * KiB}}));
}

TEST(FolderWatchSnapshot, any_number_of_children_is_listed) {
  const TempTree tree(R"(
    film-#### 4K x9000
    folder-##/ x50
  )");
  EXPECT_EQ(snapshotOf(tree).sizes.size(), 9050U);
}

TEST(FolderWatchSnapshot, names_keep_their_bytes) {
  const TempTree tree(R"(
    caf\xe9/
      \xff 12K
    \xfe\n\s 8K
    caf\xc3\xa9 4K
    -rf 4K
  )");
  EXPECT_EQ(snapshotOf(tree).sizes, (PathSizes{{tree.at("caf\xe9"), 12 * KiB},
                                               {tree.at("\xfe\n "), 8 * KiB},
                                               {tree.at("caf\xc3\xa9"), 4 * KiB},
                                               {tree.at("-rf"), 4 * KiB}}));
}

TEST(FolderWatchSnapshot, folders_of_any_depth_are_measured) {
  TempTree tree("top/");
  tree.chain("top", "folder", 3000, [](int folder, int level) {
    if (level == 3000) plantTree(folder, folder, "film 64K");
  });
  EXPECT_EQ(snapshotOf(tree).sizes, (PathSizes{{tree.at("top"), 64 * KiB}}));
}

TEST(FolderWatchSnapshot, a_folder_with_a_path_beyond_the_longest_is_measured) {
  TempTree tree;
  const std::string name(200, 'n');
  tree.chain("", name, 30, [](int folder, int level) {
    if (level == 30) plantTree(folder, folder, "inner/\n  film 64K\nTool.app/\n  binary 8K");
  });
  std::string path = tree.path();
  for (int level = 0; level < 30; ++level) path += "/" + name;
  const FolderSnapshot snapshot = FolderWatch::snapshot(path);
  EXPECT_EQ(snapshot.path, path);
  EXPECT_EQ(snapshot.sizes.size(), 2U);
  EXPECT_EQ(snapshot.sizes.at(path + "/inner"), 64 * KiB);
  EXPECT_GT(snapshot.sizes.at(path + "/Tool.app"), 0);
}

TEST(FolderWatchSnapshot, paths_below_the_root_directory_have_one_slash) {
  const FolderSnapshot snapshot =
      FolderWatch::snapshot("/", [polls = 0]() mutable { return ++polls > 4; });
  EXPECT_EQ(snapshot.path, "/");
  ASSERT_FALSE(snapshot.sizes.empty());
  for (const auto& [path, size] : snapshot.sizes) {
    EXPECT_EQ(path.rfind('/'), 0U) << path;
    EXPECT_GT(path.size(), 1U);
  }
}

TEST(FolderWatchSnapshot, the_snapshot_of_a_missing_folder_is_empty) {
  const TempTree tree("file 4K\nlink -> gone");
  EXPECT_EQ(FolderWatch::snapshot(tree.at("gone")), (FolderSnapshot{tree.at("gone"), {}}));
  EXPECT_EQ(FolderWatch::snapshot(tree.at("file")), (FolderSnapshot{tree.at("file"), {}}));
  EXPECT_EQ(FolderWatch::snapshot(tree.at("link")).sizes, PathSizes{});
}

TEST(FolderWatchSnapshot, an_unreadable_folder_keeps_its_resolved_path) {
  const TempTree tree(R"(
    locked/ mode=0
      film 1M
    link -> locked
  )");
  EXPECT_EQ(asOtherUser([&]() -> std::string {
              const FolderSnapshot snapshot = FolderWatch::snapshot(tree.at("link"));
              if (snapshot.path != tree.at("locked")) return snapshot.path;
              return snapshot.sizes.empty() ? "" : "not empty";
            }),
            "");
}

TEST(FolderWatchSnapshot, unreadable_children_are_passed_over) {
  const TempTree tree(R"(
    locked/ mode=0
      film 1M
    half/
      locked/ mode=0
        film 1M
      film 1M
    Tool.app/ mode=0
      binary 1M
    secret 1M mode=0
  )");
  EXPECT_EQ(asOtherUser([&]() -> std::string {
              const PathSizes expected{{tree.at("locked"), 0},
                                       {tree.at("half"), 1 * MiB},
                                       {tree.at("Tool.app"), tree.length("Tool.app")},
                                       {tree.at("secret"), 1 * MiB}};
              return snapshotOf(tree).sizes == expected ? "" : "other sizes";
            }),
            "");
}

TEST(FolderWatchSnapshot, children_whose_attributes_are_unreadable_are_listed_with_size_0) {
  const TempTree tree(R"(
    listed/ mode=0444
      film 1M
      Tool.app/
        binary 1M
      folder/
        film 1M
  )");
  EXPECT_EQ(asOtherUser([&]() -> std::string {
              const PathSizes expected{{tree.at("listed/film"), 0},
                                       {tree.at("listed/Tool.app"), 0},
                                       {tree.at("listed/folder"), 0}};
              return FolderWatch::snapshot(tree.at("listed")).sizes == expected ? ""
                                                                                : "other sizes";
            }),
            "");
}

TEST(FolderWatchSnapshot, a_snapshot_stops_when_cancelled) {
  const TempTree tree(R"(
    film 4K
    folder-#/ x3
      film-### 4K x500
  )");
  int polls = 0;
  FolderWatch::snapshot(tree.path(), [&] { return ++polls == 2; });
  EXPECT_EQ(polls, 2);

  // During the measurement of a child.
  bool isTold = false;
  polls = 0;
  FolderWatch::snapshot(tree.path(), [&] {
    isTold = isTold || ++polls == 100;
    return isTold;
  });
  EXPECT_EQ(polls, 100);
}

TEST(FolderWatchSnapshot, cancellation_is_polled_before_each_child) {
  const TempTree tree("empty-##/ x20");
  int polls = 0;
  FolderWatch::snapshot(tree.path(), [&] { return ++polls == 25; });
  EXPECT_EQ(polls, 25);
}

// --- Mounts -------------------------------------------------------------------------------------

// Number of reads from files during one snapshot. Folders are read by another call, so only the
// list of mounts can cause them.
std::ptrdiff_t readsInALook(const std::string& path) {
  const TracedRun run = SystemCallTrace::of([&]() -> std::string {
    FolderWatch::snapshot(path);
    return "";
  });
  EXPECT_EQ(run.end, TracedRun::End::finished) << run.told;
  return std::count(run.calls.begin(), run.calls.end(), long{SYS_read});
}

TEST(FolderWatchMounts, mounts_are_read_once_per_snapshot_for_any_number_of_children) {
  if (!SystemCallTrace::obstacle().empty()) GTEST_SKIP() << SystemCallTrace::obstacle();
  const TempTree one("child/\n  film 4K");
  const TempTree many("child-##/ x40\n  film 4K");
  const std::ptrdiff_t expected = readsInALook(one.path());
  EXPECT_GT(expected, 0);
  EXPECT_EQ(readsInALook(many.path()), expected);
}

TEST(FolderWatchMounts, pseudo_file_systems_have_size_0_and_are_not_entered) {
  const TempTree tree(R"(
    film 4K
    mounted/
    inside/
      mounted/
  )");
  const std::string told = inPrivateMounts([&]() -> std::string {
    for (const char* below : {"mounted", "inside/mounted"}) {
      if (mount("proc", tree.at(below).c_str(), "proc", 0, nullptr) != 0) return refusal();
    }
    int polls = 0;
    const FolderSnapshot snapshot = FolderWatch::snapshot(tree.path(), [&] {
      ++polls;
      return false;
    });
    const PathSizes expected{
        {tree.at("film"), 4 * KiB}, {tree.at("mounted"), 0}, {tree.at("inside"), 0}};
    if (snapshot.sizes != expected) return "other sizes";
    // Polls: one for each of the three children in the listing, one for "inside" before it is
    // measured, one for the item in it.
    return polls == 5 ? "" : std::to_string(polls) + " polls";
  });
  if (told.starts_with("refused")) GTEST_SKIP() << told;
  EXPECT_EQ(told, "");
}

TEST(FolderWatchMounts, mounted_disks_are_counted) {
  TempTree tree("mounted/\ninside/\n  mounted/");
  const std::string told = inPrivateMounts([&]() -> std::string {
    for (const char* below : {"mounted", "inside/mounted"}) {
      if (mount("tmpfs", tree.at(below).c_str(), "tmpfs", 0, nullptr) != 0) return refusal();
      tree.plant(below, "film 64K");
    }
    const PathSizes expected{{tree.at("mounted"), 64 * KiB}, {tree.at("inside"), 64 * KiB}};
    return snapshotOf(tree).sizes == expected ? "" : "other sizes";
  });
  if (told.starts_with("refused")) GTEST_SKIP() << told;
  EXPECT_EQ(told, "");
}

// --- Part of a tree -----------------------------------------------------------------------------

TEST(FolderWatchAllocatedTree, a_measurement_stops_at_the_cap_of_items) {
  const TempTree tree("film-# 4K x5");
  EXPECT_EQ(FolderWatch::allocatedTree(tree.path(), 6), 5 * 4 * KiB);
  EXPECT_EQ(FolderWatch::allocatedTree(tree.path(), 5), 5 * 4 * KiB);
  EXPECT_EQ(FolderWatch::allocatedTree(tree.path(), 4), 4 * 4 * KiB);
  EXPECT_EQ(FolderWatch::allocatedTree(tree.path(), 1), 4 * KiB);
  EXPECT_EQ(FolderWatch::allocatedTree(tree.path(), 0), 0);
}

TEST(FolderWatchAllocatedTree, folders_and_links_count_as_items_without_a_size) {
  const TempTree folders(R"(
    a/
      b/
        film 4K
  )");
  EXPECT_EQ(FolderWatch::allocatedTree(folders.path(), 2), 0);
  EXPECT_EQ(FolderWatch::allocatedTree(folders.path(), 3), 4 * KiB);

  // In any order, four of the items include two or three of the files, and all five include three.
  const TempTree links(R"(
    film-# 4K x3
    link-# x2 -> film-0
  )");
  EXPECT_LE(FolderWatch::allocatedTree(links.path(), 4), 3 * 4 * KiB);
  EXPECT_GE(FolderWatch::allocatedTree(links.path(), 4), 2 * 4 * KiB);
  EXPECT_LE(FolderWatch::allocatedTree(links.path(), 2), 2 * 4 * KiB);
  EXPECT_EQ(FolderWatch::allocatedTree(links.path(), 5), 3 * 4 * KiB);

  const TempTree linksAlone(R"(
    folder/
      link-# x3 -> film
  )");
  int polls = 0;
  FolderWatch::allocatedTree(linksAlone.path(), 2, [&] {
    ++polls;
    return false;
  });
  EXPECT_EQ(polls, 2);
}

TEST(FolderWatchAllocatedTree, links_inside_the_folder_are_not_followed) {
  const TempTree tree(R"(
    folder/
      film 4K
      up -> ..
      beside -> ../other
    other/
      film 1M
  )");
  EXPECT_EQ(FolderWatch::allocatedTree(tree.at("folder"), 100), 4 * KiB);
}

TEST(FolderWatchAllocatedTree, the_size_of_a_missing_folder_is_0) {
  const TempTree tree("file 4K");
  EXPECT_EQ(FolderWatch::allocatedTree(tree.at("gone"), 100), 0);
  EXPECT_EQ(FolderWatch::allocatedTree(tree.at("file"), 100), 0);
}

// --- Growth between two snapshots ---------------------------------------------------------------

TEST(FolderWatchGrowth, growth_is_reported_from_one_mebibyte_on) {
  TempTree tree(R"(
    just/
      film 64K
    less/
      film 64K
  )");
  const auto grown = growth(tree, [&] {
    tree.plant("just", "new 1M");
    tree.plant("less", "new 1044480");
  });
  EXPECT_EQ(grown,
            (std::vector<ScanDelta>{{"just", tree.at("just"), 64 * KiB, 1 * MiB + 64 * KiB}}));
}

TEST(FolderWatchGrowth, a_new_child_grows_from_0) {
  TempTree tree;
  const auto grown =
      growth(tree, [&] { tree.plant("caf\\xe9 1M\nfolder/\n  film 2M\nless 1044480"); });
  EXPECT_EQ(grown, (std::vector<ScanDelta>{{"folder", tree.at("folder"), 0, 2 * MiB},
                                           {"caf\xe9", tree.at("caf\xe9"), 0, 1 * MiB}}));
}

TEST(FolderWatchGrowth, the_growth_of_a_package_is_not_reported) {
  TempTree tree("Tool.app/\n  binary 4K");
  EXPECT_TRUE(growth(tree, [&] { tree.plant("Tool.app", "more 2M"); }).empty());
}

TEST(FolderWatchGrowth, growth_behind_a_link_is_not_reported) {
  TempTree tree("folder/\n  link -> ../outside\nto-outside -> outside\noutside/");
  const auto grown = growth(tree, [&] { tree.plant("outside", "film 2M"); });
  EXPECT_EQ(grown, (std::vector<ScanDelta>{{"outside", tree.at("outside"), 0, 2 * MiB}}));
}

TEST(FolderWatchGrowth, shrunk_and_removed_children_are_not_reported) {
  TempTree tree("small/\n  film 4M\ngone/\n  film 4M\nfile 4M");
  const auto grown = growth(tree, [&] {
    fs::resize_file(tree.at("small/film"), 0);
    ASSERT_TRUE(removeTree(tree.at("gone")));
    ASSERT_EQ(unlink(tree.at("file").c_str()), 0);
  });
  EXPECT_TRUE(grown.empty());
}

TEST(FolderWatchGrowth, a_removed_folder_has_no_growth) {
  TempTree tree("folder/\n  film 4M");
  const FolderSnapshot before = FolderWatch::snapshot(tree.at("folder"));
  ASSERT_EQ(before.sizes.size(), 1U);
  ASSERT_TRUE(removeTree(tree.at("folder")));
  EXPECT_TRUE(
      ScanDiff::compare(before.sizes, FolderWatch::snapshot(tree.at("folder")).sizes, MiB).empty());
}

}  // namespace
}  // namespace tessaly
