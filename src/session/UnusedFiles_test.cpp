#include "session/UnusedFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/TempTree.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Files of the year 2020.
class UnusedFilesTest : public testing::Test {
 protected:
  std::vector<SafeItem> find(
      const Shell::Run& run,
      const PostScanAnalysis::IsCancelled& isCancelled = [] { return false; }) {
    return UnusedFiles::engine(run)(
        {.tree = DiskNode(), .root = tree_.at("code"), .idleScope = tree_.path()}, isCancelled);
  }

  TempTree tree_{
      "Movies/\n  film.mp4 80K\n"
      ".cache/\n  blob 60K\n"};
};

TEST_F(UnusedFilesTest, files_of_the_idle_scope_are_found_and_ranked_by_score) {
  std::vector<std::string> asked;
  const std::vector<SafeItem> items =
      find([&](const std::string& path, const std::vector<std::string>& args, double) {
        asked = args;
        asked.insert(asked.begin(), path);
        return tree_.at("Movies/film.mp4") + "\n" + tree_.at(".cache/blob") + "\n";
      });
  EXPECT_THAT(asked,
              ElementsAre("/usr/bin/mdfind", "-onlyin", tree_.path(), "kMDItemFSSize >= 52428800"));
  ASSERT_EQ(items.size(), 2U);
  EXPECT_EQ(items[0].path, tree_.at(".cache/blob"));
  EXPECT_EQ(items[0].bytes, tree_.allocated(".cache/blob"));
  EXPECT_EQ(items[0].label, "Safe to remove");
  EXPECT_EQ(items[1].reason, "personal folder · video · idle 6+ months");
}

TEST_F(UnusedFilesTest, a_tool_that_fails_finds_nothing) {
  EXPECT_THAT(find([](const std::string& path, const auto&, double) -> std::string {
                throw ToolError("POSIX", 2, path);
              }),
              IsEmpty());
}

TEST_F(UnusedFilesTest, quitting_while_the_tool_runs_finds_nothing) {
  bool isQuitting = false;
  EXPECT_THAT(find(
                  [&](const auto&, const auto&, double) {
                    isQuitting = true;
                    return tree_.at(".cache/blob") + "\n";
                  },
                  [&] { return isQuitting; }),
              IsEmpty());
}

TEST_F(UnusedFilesTest, quitting_ends_the_real_tool) {
  int looks = 0;
  EXPECT_THAT(find({}, [&] { return ++looks > 1; }), IsEmpty());
  EXPECT_GT(looks, 1);
}

}  // namespace
}  // namespace tessaly
