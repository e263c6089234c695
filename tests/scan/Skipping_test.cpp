#include <unistd.h>

#include "scan/ScanFacts.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Skipping : public ScanFacts {};
TESSALY_FOR_ALL_WALKERS(Skipping);

TEST_P(Skipping, system_names_are_left_out_at_any_depth) {
  const TempTree tree(R"(
    .Trash/
      film 1M
    kept/
      .Trashes/
        film 1M
      .Spotlight-V100/
        film 1M
      .fseventsd/
        film 1M
      .DocumentRevisions-V100/
        film 1M
      .TemporaryItems/
        film 1M
      .vol/
        film 1M
      deeper/
        Backups.backupdb/
          film 1M
        .Trash 1M
        .vol 4K
        film 1M
  )");
  for (const Places& places : {Places::forLinux(), Places::forMacos()}) {
    const DiskNode root = scan(tree.path(), {}, places);
    EXPECT_EQ(root.size(), 1 * MiB);
    EXPECT_THAT(childNames(root), ElementsAre("kept"));
    EXPECT_THAT(childNames(below(root, "kept")), ElementsAre("deeper"));
    EXPECT_THAT(childNames(below(root, "kept/deeper")), ElementsAre("film"));
  }
}

TEST_P(Skipping, system_names_are_compared_exactly) {
  const TempTree tree(R"(
    .trash/
      film 1M
    .Trash2/
      film 1M
    Trash/
      film 1M
  )");
  EXPECT_EQ(scan(tree.path()).size(), 3 * MiB);
}

TEST_P(Skipping, the_users_trash_on_other_disks_is_left_out_on_linux) {
  TempTree tree;
  tree.plant(".Trash-" + std::to_string(getuid()) + "/\n  film 1M\n.Trash-4294967294/\n  film 1M");
  EXPECT_THAT(childNames(scan(tree.path(), {}, Places::forLinux())),
              ElementsAre(".Trash-4294967294"));
  EXPECT_EQ(scan(tree.path(), {}, Places::forMacos()).size(), 2 * MiB);
}

TEST_P(Skipping, extra_names_are_compared_exactly) {
  const TempTree tree(R"(
    node_modules/
      film 1M
    a/
      node_modules 1M
      Node_modules 1M
      node_modules2 1M
  )");
  DiskScanner::Options options;
  options.extraNames = {"node_modules"};
  const DiskNode root = scan(tree.path(), options);
  EXPECT_THAT(childNames(root), ElementsAre("a"));
  EXPECT_THAT(childNames(below(root, "a")), ElementsAre("Node_modules", "node_modules2"));
}

TEST_P(Skipping, extra_suffixes_are_compared_with_the_lower_cased_name) {
  const TempTree tree(R"(
    one.log 1M
    two.LOG 1M
    logs 1M
    three.log/
      film 1M
    \xc3\x84NDERUNG.B\xc3\x84K 1M
    \xff.LoG 1M
  )");
  DiskScanner::Options options;
  options.extraSuffixes = {".log", ".b\xc3\xa4k"};
  EXPECT_THAT(childNames(scan(tree.path(), options)), ElementsAre("logs"));
}

TEST_P(Skipping, an_extra_suffix_with_capitals_matches_nothing) {
  const TempTree tree("one.LOG 1M");
  DiskScanner::Options options;
  options.extraSuffixes = {".LOG"};
  EXPECT_THAT(childNames(scan(tree.path(), options)), ElementsAre("one.LOG"));
}

TEST_P(Skipping, excluded_folders_are_left_out_by_path) {
  const TempTree tree(R"(
    a/
      b/
        film 1M
      bc/
        film 1M
      file 1M
    b/
      film 1M
  )");
  DiskScanner::Options options;
  options.extraPrefixes = {"", tree.at("a/b/"), tree.at("a/file")};
  const DiskNode root = scan(tree.path(), options);
  EXPECT_THAT(childNames(below(root, "a")), ElementsAre("bc"));
  EXPECT_TRUE(has(root, "b/film"));
}

TEST_P(Skipping, an_excluded_root_is_a_root_without_children) {
  const TempTree tree("film 1M");
  DiskScanner::Options options;
  options.extraPrefixes = {tree.path()};
  const DiskNode root = scan(tree.path(), options);
  EXPECT_EQ(root.size(), 0);
  EXPECT_THAT(childNames(root), IsEmpty());
  EXPECT_EQ(root.path(), tree.path());
}

TEST_P(Skipping, a_root_above_an_excluded_folder_is_walked) {
  const TempTree tree(R"(
    a/
      film 1M
  )");
  DiskScanner::Options options;
  options.extraPrefixes = {tree.at("a/film/deeper"), tree.path() + "x"};
  EXPECT_EQ(scan(tree.at("a"), options).size(), 1 * MiB);
}

TEST_P(Skipping, an_excluded_folder_matches_by_its_resolved_path) {
  const TempTree tree(R"(
    real/
      film 1M
    alias -> real
  )");
  DiskScanner::Options options;
  options.extraPrefixes = {tree.at("alias")};
  EXPECT_EQ(scan(tree.path(), options).size(), 1 * MiB);
}

TEST_P(Skipping, places_of_the_system_are_left_out_by_path) {
  const TempTree tree(R"(
    share/
      Trash/
        film 1M
      other/
        Trash/
          film 1M
  )");
  Places places = Places::forLinux();
  places.skipPaths = {tree.at("share/Trash")};
  const DiskNode root = scan(tree.path(), {}, places);
  EXPECT_EQ(root.size(), 1 * MiB);
  EXPECT_THAT(childNames(below(root, "share")), ElementsAre("other"));
}

TEST_P(Skipping, the_trash_behind_a_link_or_a_double_slash_is_left_out) {
  const TempTree tree(R"(
    data/
      Trash/
        film 1M
      kept 1M
    link -> data
  )");
  for (const char* way : {"data", "data/", "link", "link//"}) {
    Places places = Places::forLinux();
    places.skipPaths = {trashInDataHome(tree.at(way).c_str(), "/nowhere")};
    const DiskNode root = scan(tree.path(), {}, places);
    EXPECT_EQ(root.size(), 1 * MiB) << way;
    EXPECT_FALSE(has(root, "data/Trash")) << way;
  }
}

TEST_P(Skipping, a_root_named_like_a_skipped_folder_is_walked) {
  const TempTree tree(R"(
    .Trash/
      film 1M
    share/
      Trash/
        film 1M
  )");
  EXPECT_EQ(scan(tree.at(".Trash")).size(), 1 * MiB);
  Places places = Places::forLinux();
  places.skipPaths = {tree.at("share/Trash")};
  EXPECT_EQ(scan(tree.at("share/Trash"), {}, places).size(), 1 * MiB);
}

TEST_P(Skipping, names_at_the_top_of_a_disk_are_not_special_elsewhere) {
  const TempTree tree(R"(
    dev/
      film 1M
    proc/
      film 1M
    private/
      film 1M
    home/
      film 1M
  )");
  for (const Places& places : {Places::forLinux(), Places::forMacos()}) {
    EXPECT_EQ(scan(tree.path(), {}, places).size(), 4 * MiB);
  }
}

TEST_P(Skipping, a_link_to_outside_adds_nothing) {
  const TempTree outside("film 1M");
  TempTree tree;
  tree.plant("way-out -> " + outside.path());
  EXPECT_EQ(scan(tree.path()).size(), 0);
}

}  // namespace
}  // namespace tessaly
