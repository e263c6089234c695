#include "platform/TreeSurvey.h"

#include <cerrno>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <sys/stat.h>
#include <unistd.h>

#include "support/ForkedChild.h"
#include "support/PlainFiles.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using Kind = FileIdentity::Kind;
using testing::ElementsAre;
using testing::Pair;
using testing::UnorderedElementsAre;

bool goOn(const TreeSurvey::Entry&) {
  return true;
}

std::uint64_t fingerprintOf(const std::string& path) {
  const Result<TreeSurvey::State> state = TreeSurvey::of(path, "top", goOn);
  EXPECT_TRUE(state.ok());
  return state ? state.value().fingerprint : 0;
}

// The obstacle of each entry, by path.
std::map<std::string, int> obstaclesIn(const std::string& path) {
  std::map<std::string, int> obstacles;
  const auto state = TreeSurvey::of(path, "top", [&](const TreeSurvey::Entry& entry) {
    obstacles[entry.path] = entry.obstacle;
    return true;
  });
  EXPECT_TRUE(state.ok());
  return obstacles;
}

TEST(TreeSurvey, the_item_and_all_its_contents_are_visited_once) {
  const TempTree tree("a/\n  b/\n    c/\n    d 4K\n  e 8K\n  f -> b\n");
  std::vector<std::tuple<std::string, Kind, std::int64_t>> found;
  const auto state = TreeSurvey::of(tree.at("a"), "x/top", [&](const TreeSurvey::Entry& entry) {
    found.emplace_back(entry.path, entry.kind, entry.kind == Kind::file ? entry.size : 0);
    return true;
  });
  ASSERT_TRUE(state);
  EXPECT_EQ(state.value().item, FileIdentity::of(tree.at("a")).value());
  EXPECT_THAT(found, UnorderedElementsAre(std::tuple("x/top", Kind::folder, 0),
                                          std::tuple("x/top/b", Kind::folder, 0),
                                          std::tuple("x/top/b/c", Kind::folder, 0),
                                          std::tuple("x/top/b/d", Kind::file, 4096),
                                          std::tuple("x/top/e", Kind::file, 8192),
                                          std::tuple("x/top/f", Kind::link, 0)));
}

TEST(TreeSurvey, one_file_or_link_can_be_surveyed) {
  const TempTree tree("film 4K\nlink -> film\n");
  EXPECT_THAT(obstaclesIn(tree.at("film")), ElementsAre(Pair("top", 0)));
  EXPECT_THAT(obstaclesIn(tree.at("link")), ElementsAre(Pair("top", 0)));
}

TEST(TreeSurvey, the_survey_of_a_missing_item_is_an_error) {
  const TempTree tree;
  EXPECT_EQ(TreeSurvey::of(tree.at("gone"), "top", goOn).error().code, ENOENT);
}

TEST(TreeSurvey, entries_without_content_to_be_read_are_reported) {
  const TempTree tree(
      "a/\n  pipe fifo\n  tap socket\n  file 4K\n  good -> file\n  way -> .\n  dead -> nowhere\n"
      "  loop -> loop\n  drain -> pipe\n");
  EXPECT_THAT(
      obstaclesIn(tree.at("a")),
      UnorderedElementsAre(Pair("top", 0), Pair("top/pipe", EOPNOTSUPP),
                           Pair("top/tap", EOPNOTSUPP), Pair("top/file", 0), Pair("top/good", 0),
                           Pair("top/way", 0), Pair("top/dead", ENOENT), Pair("top/loop", ELOOP),
                           Pair("top/drain", EOPNOTSUPP)));
}

TEST(TreeSurvey, entries_without_read_permission_are_reported) {
  const TempTree tree(
      "a/\n  open 4K\n  secret 4K mode=0\n  alias -> secret\n  locked/ mode=0311\n    film 4K\n");
  ASSERT_EQ(chmod(tree.path().c_str(), 0755), 0);
  EXPECT_EQ(asOtherUser([&]() -> std::string {
              const auto found = obstaclesIn(tree.at("a"));
              const std::map<std::string, int> expected = {{"top", 0},
                                                           {"top/open", 0},
                                                           {"top/secret", EACCES},
                                                           {"top/alias", EACCES},
                                                           {"top/locked", EACCES}};
              return found == expected ? "" : "other obstacles";
            }),
            "");
  ASSERT_EQ(chmod(tree.at("a/locked").c_str(), 0755), 0);
}

TEST(TreeSurvey, the_survey_ends_when_the_callback_returns_false) {
  const TempTree tree("a/\n  file## x50\n");
  int taken = 0;
  const auto state =
      TreeSurvey::of(tree.at("a"), "top", [&](const TreeSurvey::Entry&) { return ++taken < 10; });
  ASSERT_FALSE(state);
  EXPECT_EQ(state.error().code, ECANCELED);
  EXPECT_EQ(taken, 10);
}

TEST(TreeSurvey, the_fingerprint_stays_the_same_while_nothing_changes) {
  const TempTree tree("a/\n  b/\n    c/\n      file## 4K x30\n");
  const std::uint64_t print = fingerprintOf(tree.at("a"));
  EXPECT_EQ(contentOf(tree.at("a/b/c/file01")).size(), 4096U);
  EXPECT_EQ(fingerprintOf(tree.at("a")), print);
}

TEST(TreeSurvey, any_change_deep_in_the_tree_changes_the_fingerprint) {
  const TempTree tree("a/\n  b/\n    c/\n      file 4K\n      other 4K\n");
  std::uint64_t before = fingerprintOf(tree.at("a"));
  const auto expectAnother = [&](const char* what) {
    const std::uint64_t now = fingerprintOf(tree.at("a"));
    EXPECT_NE(now, before) << what;
    before = now;
  };
  putFile(tree.at("a/b/c/new"), "x");
  expectAnother("added");
  fs::remove(tree.at("a/b/c/new"));
  expectAnother("removed");
  putFile(tree.at("a/b/c/file"), "longer");
  expectAnother("written to");
  fs::permissions(tree.at("a/b/c/file"), fs::perms::owner_read);
  expectAnother("closed to readers");
  fs::rename(tree.at("a/b/c/other"), tree.at("a/b/c/third"));
  expectAnother("renamed");
  fs::remove(tree.at("a/b/c/third"));
  fs::create_symlink("file", tree.at("a/b/c/third"));
  expectAnother("replaced");
}

TEST(TreeSurvey, folders_of_any_depth_are_surveyed) {
  TempTree tree("a/\n");
  constexpr int depth = 5000;
  tree.chain("a", "d", depth);
  int folders = 0;
  ASSERT_TRUE(
      TreeSurvey::of(tree.at("a"), "top", [&](const TreeSurvey::Entry&) { return ++folders > 0; }));
  EXPECT_EQ(folders, depth + 1);
}

}  // namespace
}  // namespace tessaly
