#include <algorithm>

#include "scan/ScanFacts.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class Packages : public ScanFacts {};
TESSALY_FOR_ALL_WALKERS(Packages);

constexpr const char* library = R"(
  Photos.photoslibrary/
    database 64K
    originals/
      picture.jpg 1M
      tiny 4K
)";

TEST_P(Packages, a_photoslibrary_is_opaque_and_counts_once_in_full) {
  const TempTree tree(library);
  const DiskNode root = scan(tree.path());
  const DiskNode photos = below(root, "Photos.photoslibrary");
  EXPECT_TRUE(photos.isDir());
  EXPECT_EQ(photos.kind(), FileKind::folder);
  EXPECT_THAT(childNames(photos), IsEmpty());
  EXPECT_EQ(photos.size(), 1 * MiB + 68 * KiB);
  EXPECT_EQ(root.size(), 1 * MiB + 68 * KiB);
}

TEST_P(Packages, a_photoslibrary_is_walked_like_any_folder_when_packages_are_expanded) {
  const TempTree tree(library);
  const DiskNode photos = below(scanExpanded(tree.path()), "Photos.photoslibrary");
  EXPECT_EQ(photos.kind(), FileKind::folder);
  EXPECT_THAT(childNames(photos), ElementsAre("originals"));
  EXPECT_EQ(photos.size(), 1 * MiB + (2 * 64 + 4) * KiB);
  EXPECT_EQ(below(photos, "originals").size(), 1 * MiB + 8 * KiB);
  EXPECT_THAT(childNames(below(photos, "originals")), ElementsAre("picture.jpg"));
}

TEST_P(Packages, a_sparsebundle_is_an_opaque_folder) {
  const TempTree tree(R"(
    disk.sparsebundle/
      bands/
        ## 1M x3
  )");
  const DiskNode disk = below(scan(tree.path()), "disk.sparsebundle");
  EXPECT_EQ(disk.kind(), FileKind::folder);
  EXPECT_EQ(disk.size(), 3 * MiB);
  EXPECT_THAT(childNames(disk), IsEmpty());
}

TEST_P(Packages, an_app_is_opaque_and_of_kind_app) {
  const TempTree tree(R"(
    Tool.app/
      Contents/
        binary 1M
  )");
  const DiskNode tool = below(scan(tree.path()), "Tool.app");
  EXPECT_EQ(tool.kind(), FileKind::app);
  EXPECT_EQ(tool.size(), 1 * MiB);
  EXPECT_THAT(childNames(tool), IsEmpty());
}

TEST_P(Packages, an_app_below_the_root_has_no_children_even_when_packages_are_expanded) {
  const TempTree tree(R"(
    Applications/
      Tool.app/
        direct 4K
        Contents/
          binary 1M
          tiny 4K
          Helper.app/
            helper 1M
  )");
  const DiskNode root = scanExpanded(tree.path());
  const DiskNode tool = below(root, "Applications/Tool.app");
  EXPECT_THAT(childNames(tool), IsEmpty());
  EXPECT_EQ(tool.size(), 2 * MiB + 8 * KiB) << "nothing below a bundle weighs twice";
  EXPECT_EQ(root.size(), 2 * MiB + 8 * KiB);
}

TEST_P(Packages, suffixes_of_packages_match_in_any_case) {
  const TempTree tree(R"(
    A.APP/
      inside 1M
    B.PhotosLibrary/
      inside 1M
    \xff.App/
      inside 1M
  )");
  const DiskNode closed = scan(tree.path());
  EXPECT_THAT(childNames(below(closed, "A.APP")), IsEmpty());
  EXPECT_EQ(below(closed, "A.APP").kind(), FileKind::app);
  EXPECT_THAT(childNames(below(closed, "B.PhotosLibrary")), IsEmpty());
  EXPECT_THAT(childNames(below(closed, "\xff.App")), IsEmpty());
  EXPECT_EQ(below(closed, "\xff.App").kind(), FileKind::app);
  const DiskNode open = scanExpanded(tree.path());
  EXPECT_THAT(childNames(below(open, "A.APP")), IsEmpty());
  EXPECT_THAT(childNames(below(open, "B.PhotosLibrary")), ElementsAre("inside"));
  EXPECT_THAT(childNames(below(open, "\xff.App")), IsEmpty());
}

TEST_P(Packages, a_package_as_root_shows_its_contents_only_when_packages_are_expanded) {
  const TempTree tree(R"(
    Tool.app/
      Contents/
        binary 1M
        tiny 4K
  )");
  const DiskNode open = scanExpanded(tree.at("Tool.app"));
  EXPECT_EQ(open.kind(), FileKind::app);
  EXPECT_THAT(childNames(open), ElementsAre("Contents"));
  EXPECT_EQ(below(open, "Contents").size(), 1 * MiB + 8 * KiB);
  const DiskNode closed = scan(tree.at("Tool.app"));
  EXPECT_THAT(childNames(closed), IsEmpty());
  EXPECT_EQ(closed.size(), 1 * MiB + 4 * KiB);
}

TEST_P(Packages, an_empty_package_has_the_length_of_its_entry) {
  const TempTree tree("Empty.app/");
  ASSERT_GT(tree.length("Empty.app"), 0);
  EXPECT_EQ(below(scan(tree.path()), "Empty.app").size(), tree.length("Empty.app"));
  EXPECT_EQ(below(scanExpanded(tree.path()), "Empty.app").size(), 0);
}

TEST_P(Packages, a_package_has_the_larger_size_of_its_entry_and_its_contents) {
  const TempTree tree(R"(
    Wide.app/
      a-name-that-fills-the-entry-of-the-folder-#### x500
      some 4K
  )");
  const std::int64_t entry = tree.length("Wide.app");
  ASSERT_GT(entry, 4 * KiB);
  EXPECT_EQ(below(scan(tree.path()), "Wide.app").size(), entry);
}

TEST_P(Packages, everything_in_a_package_counts_except_links) {
  const TempTree tree(R"(
    Tool.app/
      .hidden 64K
      .Trash/
        trashed 64K
      node_modules/
        module 64K
      Inner.app/
        inner 64K
      link -> .hidden
      up -> ../..
      twin = Tool.app/.hidden
      pipe fifo
  )");
  DiskScanner::Options options;
  options.extraNames = {"node_modules"};
  options.extraPrefixes = {tree.at("Tool.app/Inner.app")};
  EXPECT_EQ(below(scan(tree.path(), options), "Tool.app").size(), 5 * 64 * KiB);
}

TEST_P(Packages, a_package_in_a_package_counts_once) {
  const TempTree tree(R"(
    Outer.photoslibrary/
      Inner.app/
        deep.sparsebundle/
          band 1M
  )");
  EXPECT_EQ(scan(tree.path()).size(), 1 * MiB);
}

TEST_P(Packages, an_opaque_package_has_its_own_time_and_an_expanded_one_the_newest_inside) {
  const TempTree tree(R"(
    Photos.photoslibrary/ mtime=100
      picture 1M mtime=900
  )");
  EXPECT_EQ(below(scan(tree.path()), "Photos.photoslibrary").mtime(), 100);
  EXPECT_EQ(below(scanExpanded(tree.path()), "Photos.photoslibrary").mtime(), 900);
}

TEST_P(Packages, a_file_named_like_a_package_is_a_node_at_any_size) {
  const TempTree tree(R"(
    a/
      Tool.app 4K
      Empty.app
      Small.photoslibrary 4K
  )");
  for (const DiskNode& root : {scan(tree.path()), scanExpanded(tree.path())}) {
    const DiskNode a = below(root, "a");
    EXPECT_EQ(a.size(), 8 * KiB);
    EXPECT_THAT(childNames(a), ElementsAre("Small.photoslibrary", "Tool.app", "Empty.app"));
    EXPECT_TRUE(below(a, "Tool.app").isDir());
    EXPECT_EQ(below(a, "Tool.app").kind(), FileKind::app);
    EXPECT_EQ(below(a, "Tool.app").size(), 4 * KiB);
    EXPECT_TRUE(below(a, "Small.photoslibrary").isDir());
    EXPECT_EQ(below(a, "Small.photoslibrary").kind(), FileKind::folder);
    EXPECT_TRUE(below(a, "Empty.app").isDir());
  }
}

TEST_P(Packages, a_link_named_like_a_package_is_a_link) {
  const TempTree tree(R"(
    real/
      film 1M
    Tool.app -> real
  )");
  EXPECT_THAT(childNames(scan(tree.path())), ElementsAre("real"));
}

TEST_P(Packages, a_folder_whose_name_is_only_the_suffix_is_a_package) {
  const TempTree tree(R"(
    .app/
      inside 1M
  )");
  EXPECT_EQ(below(scan(tree.path()), ".app").kind(), FileKind::app);
  EXPECT_THAT(childNames(below(scan(tree.path()), ".app")), IsEmpty());
}

TEST_P(Packages, a_package_is_a_node_in_every_folder_and_at_every_size) {
  const TempTree tree(R"(
    a/
      One.app/
        tiny 8K
      Two.sparsebundle/
        tiny 8K
  )");
  EXPECT_THAT(childNames(below(scan(tree.path()), "a")),
              UnorderedElementsAre("One.app", "Two.sparsebundle"));
}

}  // namespace
}  // namespace tessaly
