#include "reclaim/ReclaimAnalysis.h"

#include <gmock/gmock.h>

#include "support/FakeFileAccess.h"
#include "support/FakeVolumes.h"
#include "support/NoTools.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Long ago, so that the clock of the machine would make all files idle.
constexpr double now = 1'500'000'000;

// A machine whose tools answer at once.
class ReclaimAnalysisTest : public testing::Test {
 protected:
  ReclaimAnalysisTest() {
    files_.files["/home/ada/film.mkv"].values = {.modified = 0, .allocated = 1 << 26, .size = 1};
    files_.files["/home/ada/new.mkv"].values = {.modified = now, .allocated = 1 << 26, .size = 1};
  }

  std::string answer(const std::string& tool, const std::vector<std::string>& args) {
    calls_.push_back(tool + " " + args.back());
    if (tool == "/usr/bin/mdfind") searched_ = args.at(1);
    if (tool == "/usr/bin/du") return args.back() == "/home/ada/.npm/_cacache" ? "12\tx" : "0\tx";
    if (tool == "/usr/bin/mdfind") return "/home/ada/film.mkv\n/home/ada/new.mkv\n";
    if (tool == "/usr/bin/tmutil") return "com.apple.TimeMachine.a\ncom.apple.TimeMachine.b\n";
    return "";
  }

  // Cancelled as soon as the tool `last` has answered; never if that is empty.
  ReclaimAnalysis::Finds analysed(const std::optional<DiskNode>& tree,
                                  const std::string& last = {}) {
    bool isCancelled = false;
    const auto run = [&](const std::string& path, const std::vector<std::string>& args, double) {
      std::string text = answer(path, args);
      isCancelled = isCancelled || calls_.back() == last;
      return text;
    };
    return ReclaimAnalysis::run("/home/ada", tree,
                                {.files = files_,
                                 .volumes = volumes_,
                                 .run = run,
                                 .now = [] { return now; },
                                 .places = places_},
                                [&] { return isCancelled; });
  }

  const std::vector<ReclaimPlace> places_ = {
      {.id = "npm", .label = "npm cache", .relativePath = ".npm/_cacache"},
      {.id = "pip", .label = "pip cache", .relativePath = ".cache/pip"},
      {.id = "trash", .label = "Trash", .relativePath = ".Trash", .trashAction = true}};
  const DiskNode tree_ = DiskNode(
      {.name = "ada", .path = "/home/ada", .size = 1 << 22, .isDir = true},
      {DiskNode({.name = "venv", .path = "/home/ada/venv", .size = 1 << 22, .isDir = true})});
  FakeFileAccess files_;
  FakeVolumes volumes_;
  std::vector<std::string> calls_;
  std::string searched_;  // the folder in which large files were searched
};

TEST_F(ReclaimAnalysisTest, the_four_steps_run_in_their_order) {
  volumes_.mount("/media/disk", std::nullopt);
  const ReclaimAnalysis::Finds finds = analysed(tree_);
  ASSERT_EQ(finds.probes.size(), 1U);
  EXPECT_EQ(finds.probes[0].path, "/home/ada/.npm/_cacache");
  EXPECT_EQ(finds.probes[0].bytes, 12 * 1024);
  ASSERT_EQ(finds.treeWins.size(), 1U);
  EXPECT_EQ(finds.treeWins[0].path, "/home/ada/venv");
  ASSERT_EQ(finds.largeOld.size(), 1U);
  EXPECT_EQ(finds.largeOld[0].path, "/home/ada/film.mkv");
  EXPECT_EQ(searched_, "/home/ada");
  EXPECT_EQ(finds.snapshots, 2);
  EXPECT_THAT(calls_,
              ElementsAre("/usr/bin/du /home/ada/.npm/_cacache", "/usr/bin/du /home/ada/.cache/pip",
                          "/bin/df /media/disk", "/usr/bin/mdfind kMDItemFSSize >= 52428800",
                          "/usr/bin/tmutil /"));
}

TEST_F(ReclaimAnalysisTest, without_a_scan_there_are_no_folders_of_a_tree) {
  const ReclaimAnalysis::Finds finds = analysed(std::nullopt);
  EXPECT_THAT(finds.treeWins, IsEmpty());
  EXPECT_EQ(finds.probes.size(), 1U);
  EXPECT_EQ(finds.largeOld.size(), 1U);
}

TEST_F(ReclaimAnalysisTest, a_machine_without_tools_still_has_the_folders_of_the_tree) {
  const ReclaimAnalysis::Finds finds = ReclaimAnalysis::run(
      "/home/ada", tree_, {.files = files_, .volumes = volumes_, .run = noTools}, {});
  EXPECT_THAT(finds.probes, IsEmpty());
  EXPECT_EQ(finds.treeWins.size(), 1U);
  EXPECT_THAT(finds.largeOld, IsEmpty());
  EXPECT_EQ(finds.snapshots, 0);
}

TEST_F(ReclaimAnalysisTest, no_tool_is_started_after_a_cancellation) {
  analysed(tree_);
  const std::vector<std::string> all = calls_;
  for (std::size_t i = 0; i < all.size(); ++i) {
    calls_.clear();
    analysed(tree_, all[i]);
    EXPECT_EQ(calls_, std::vector<std::string>(all.begin(), all.begin() + i + 1)) << all[i];
  }
}

TEST_F(ReclaimAnalysisTest, a_cancellation_ends_the_tools_of_the_machine) {
  const TempTree home(".cache/\n  pip/\n    wheel 1M\n");
  const std::vector<ReclaimPlace> places = {
      {.id = "pip", .label = "pip cache", .relativePath = ".cache/pip"}};
  const auto rowsUntil = [&](int looks) {
    return ReclaimAnalysis::run(
               home.path(), std::nullopt,
               {.files = FileAccess::ofMachine(), .volumes = volumes_, .places = places},
               [&looks] { return looks-- <= 0; })
        .probes.size();
  };
  // The first look is before the tool starts, the second at its start.
  EXPECT_EQ(rowsUntil(1), 0U);
  EXPECT_EQ(rowsUntil(1000000), 1U);
}

TEST_F(ReclaimAnalysisTest, no_volume_and_no_tree_is_looked_at_after_a_cancellation) {
  const ReclaimAnalysis::Finds finds = analysed(tree_, "/usr/bin/du /home/ada/.cache/pip");
  EXPECT_EQ(volumes_.lists, 0);
  EXPECT_THAT(finds.treeWins, IsEmpty());
}

}  // namespace
}  // namespace tessaly
