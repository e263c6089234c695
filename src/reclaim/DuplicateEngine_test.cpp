// Which files of a tree are compared, and how they are grouped; nothing of it needs real files.

#include "reclaim/DuplicateEngine.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <unistd.h>

#include "platform/Sha256.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int64_t MiB = 1048576;
constexpr std::int64_t least = 50 * MiB;

DiskNode folder(const std::string& path, const std::vector<DiskNode>& children,
                FileKind kind = FileKind::folder) {
  return DiskNode({.name = path.substr(path.rfind('/') + 1),
                   .path = path,
                   .size = 1000 * MiB,
                   .isDir = true,
                   .kind = kind},
                  children);
}

DiskNode file(const std::string& path, std::int64_t size, FileKind kind = FileKind::other) {
  return DiskNode(
      {.name = path.substr(path.rfind('/') + 1), .path = path, .size = size, .kind = kind});
}

std::vector<std::string> pathsOf(const std::vector<PathSize>& files) {
  std::vector<std::string> paths;
  for (const PathSize& item : files) paths.push_back(item.path);
  return paths;
}

// The groups, each as "digest: path path".
std::vector<std::string> linesOf(const std::vector<DuplicateGroup>& groups) {
  std::vector<std::string> lines;
  for (const DuplicateGroup& group : groups) {
    std::string line = group.digest + ":";
    for (const PathSize& item : group.files) line += " " + item.path;
    lines.push_back(line);
  }
  return lines;
}

// A disk whose files have known contents, which records what is read.
struct Contents {
  std::map<std::string, std::string> byPath;
  std::vector<std::string> read = {};

  DuplicateEngine::Hash hash() {
    return [this](const std::string& path) -> std::optional<std::string> {
      read.push_back(path);
      const auto found = byPath.find(path);
      return found == byPath.end() ? std::nullopt : std::optional(found->second);
    };
  }
};

TEST(DuplicateEngine, the_leaves_of_the_tree_are_candidates_in_its_order) {
  const DiskNode tree =
      folder("/d", {folder("/d/b", {file("/d/b/1", 90 * MiB), file("/d/b/2", 60 * MiB)}),
                    file("/d/a", 70 * MiB, FileKind::video), folder("/d/empty", {})});
  const std::vector<PathSize> files = DuplicateEngine::files(tree, least);
  EXPECT_THAT(pathsOf(files), ElementsAre("/d/b/1", "/d/b/2", "/d/a"));
  EXPECT_EQ(files.front(), (PathSize{.name = "1", .path = "/d/b/1", .size = 90 * MiB}));
}

TEST(DuplicateEngine, a_file_of_just_the_least_size_is_a_candidate) {
  const DiskNode tree = folder("/d", {file("/d/a", least), file("/d/b", least - 1)});
  EXPECT_THAT(pathsOf(DuplicateEngine::files(tree, least)), ElementsAre("/d/a"));
  EXPECT_THAT(pathsOf(DuplicateEngine::files(file("/d", least), least)), ElementsAre("/d"));
}

TEST(DuplicateEngine, an_application_folder_is_a_candidate_and_not_entered) {
  const DiskNode tree =
      folder("/d", {folder("/d/Tool.app", {file("/d/Tool.app/x", 60 * MiB)}, FileKind::app),
                    folder("/d/Photos", {file("/d/Photos/x", 60 * MiB)})});
  EXPECT_THAT(pathsOf(DuplicateEngine::files(tree, least)),
              ElementsAre("/d/Tool.app", "/d/Photos/x"));
}

TEST(DuplicateEngine, a_file_of_a_size_of_its_own_is_not_read) {
  Contents disk{{{"/d/a", "same"}, {"/d/b", "same"}}};
  const DiskNode one = folder("/d", {file("/d/a", least)});
  EXPECT_THAT(DuplicateEngine::groups(one, least, disk.hash()), IsEmpty());
  const DiskNode two = folder("/d", {file("/d/a", least + 1), file("/d/b", least)});
  EXPECT_THAT(DuplicateEngine::groups(two, least, disk.hash()), IsEmpty());
  EXPECT_THAT(disk.read, IsEmpty());
}

TEST(DuplicateEngine, two_equal_files_of_the_least_size_are_a_group) {
  Contents disk{{{"/d/a", "same"}, {"/d/b", "same"}}};
  const DiskNode tree = folder("/d", {file("/d/a", least), file("/d/b", least)});
  EXPECT_THAT(DuplicateEngine::groups(tree, least, disk.hash()),
              ElementsAre(DuplicateGroup{.digest = "same",
                                         .bytes = least,
                                         .files = {{.name = "a", .path = "/d/a", .size = least},
                                                   {.name = "b", .path = "/d/b", .size = least}}}));
  const DiskNode smaller = folder("/d", {file("/d/a", least - 1), file("/d/b", least - 1)});
  EXPECT_THAT(DuplicateEngine::groups(smaller, least, disk.hash()), IsEmpty());
}

TEST(DuplicateEngine, of_three_files_of_one_size_the_two_equal_ones_are_a_group) {
  Contents disk{{{"/d/a", "one"}, {"/d/b", "two"}, {"/d/c", "one"}}};
  const DiskNode tree =
      folder("/d", {file("/d/a", least), file("/d/b", least), file("/d/c", least)});
  EXPECT_THAT(linesOf(DuplicateEngine::groups(tree, least, disk.hash())),
              ElementsAre("one: /d/a /d/c"));
  EXPECT_THAT(disk.read, ElementsAre("/d/a", "/d/b", "/d/c"));
}

TEST(DuplicateEngine, two_sets_of_equal_files_of_one_size_are_two_groups) {
  Contents disk{{{"/d/a", "x"}, {"/d/b", "y"}, {"/d/c", "y"}, {"/d/d", "x"}}};
  const DiskNode tree = folder(
      "/d", {file("/d/a", least), file("/d/b", least), file("/d/c", least), file("/d/d", least)});
  EXPECT_THAT(linesOf(DuplicateEngine::groups(tree, least, disk.hash())),
              ElementsAre("x: /d/a /d/d", "y: /d/b /d/c"));
}

TEST(DuplicateEngine, a_file_without_a_digest_leaves_the_others_to_be_compared) {
  Contents disk{{{"/d/b", "same"}, {"/d/c", "same"}}};
  const DiskNode tree =
      folder("/d", {file("/d/a", least), file("/d/b", least), file("/d/c", least)});
  EXPECT_THAT(linesOf(DuplicateEngine::groups(tree, least, disk.hash())),
              ElementsAre("same: /d/b /d/c"));
  disk.byPath.erase("/d/b");
  EXPECT_THAT(DuplicateEngine::groups(tree, least, disk.hash()), IsEmpty());
}

TEST(DuplicateEngine, files_of_different_sizes_are_in_no_group_whatever_their_digests) {
  Contents disk{{{"/d/a", "same"}, {"/d/b", "same"}, {"/d/c", "same"}, {"/d/d", "same"}}};
  const DiskNode tree = folder("/d", {file("/d/a", least), file("/d/b", least + 1),
                                      file("/d/c", least), file("/d/d", least + 1)});
  EXPECT_THAT(linesOf(DuplicateEngine::groups(tree, least, disk.hash())),
              ElementsAre("same: /d/b /d/d", "same: /d/a /d/c"));
}

TEST(DuplicateEngine, the_group_that_takes_the_most_space_comes_first) {
  Contents disk{
      {{"/d/1", "two"}, {"/d/2", "two"}, {"/d/3", "three"}, {"/d/4", "three"}, {"/d/5", "three"}}};
  const DiskNode tree =
      folder("/d", {file("/d/1", 80 * MiB), file("/d/2", 80 * MiB), file("/d/3", 60 * MiB),
                    file("/d/4", 60 * MiB), file("/d/5", 60 * MiB)});
  EXPECT_THAT(linesOf(DuplicateEngine::groups(tree, least, disk.hash())),
              ElementsAre("three: /d/3 /d/4 /d/5", "two: /d/1 /d/2"));
}

TEST(DuplicateEngine, groups_that_take_equal_space_keep_the_order_of_the_tree) {
  Contents disk;
  std::vector<DiskNode> children;
  // 60 MiB three times and 90 MiB twice, in turns, with digests in no order.
  for (int k = 0; k < 40; ++k) {
    const std::string digest = std::to_string((k * 7) % 40);
    const bool isLarge = k % 2 == 0;
    for (int copy = 0; copy < (isLarge ? 2 : 3); ++copy) {
      const std::string path = "/d/" + std::to_string(k) + "." + std::to_string(copy);
      children.push_back(file(path, isLarge ? 90 * MiB : 60 * MiB));
      disk.byPath[path] = digest;
    }
  }
  std::vector<std::string> firsts;
  for (const DuplicateGroup& group :
       DuplicateEngine::groups(folder("/d", children), least, disk.hash()))
    firsts.push_back(group.files.front().path);
  std::vector<std::string> expected;
  for (int k = 0; k < 40; k += 2) expected.push_back("/d/" + std::to_string(k) + ".0");
  for (int k = 1; k < 40; k += 2) expected.push_back("/d/" + std::to_string(k) + ".0");
  EXPECT_EQ(firsts, expected);
}

TEST(DuplicateEngine, a_footprint_beyond_64_bits_ends_the_program) {
  Contents disk{{{"/d/a", "same"}, {"/d/b", "same"}, {"/d/c", "x"}, {"/d/d", "x"}}};
  const std::int64_t huge = INT64_MAX / 2 + 1;
  const DiskNode tree = folder(
      "/d", {file("/d/a", huge), file("/d/b", huge), file("/d/c", least), file("/d/d", least)});
  EXPECT_DEATH(DuplicateEngine::groups(tree, least, disk.hash()), "");
}

TEST(DuplicateEngine, hard_links_are_duplicates) {
  const TempTree disk("a 4K\nb = a\n");
  const DiskNode tree = folder(disk.path(), {file(disk.at("a"), 4096), file(disk.at("b"), 4096)});
  const std::vector<DuplicateGroup> groups = DuplicateEngine::groups(tree, 1);
  ASSERT_EQ(groups.size(), 1U);
  EXPECT_THAT(pathsOf(groups.front().files), ElementsAre(disk.at("a"), disk.at("b")));
}

TEST(DuplicateEngine, the_digest_of_a_file_is_the_one_of_its_content) {
  const TempTree disk("file 8K\nempty\nfolder/\nlink -> file\npipe fifo\nTool.app/\n");
  Sha256 zeros;
  zeros.addZeros(8192);
  EXPECT_EQ(DuplicateEngine::hashFile(disk.at("file"))->size(), 64U);
  EXPECT_EQ(DuplicateEngine::hashFile(disk.at("empty")),
            "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
  for (const char* name : {"folder", "link", "pipe", "Tool.app", "missing"})
    EXPECT_EQ(DuplicateEngine::hashFile(disk.at(name)), std::nullopt) << name;
}

}  // namespace
}  // namespace tessaly
