#include <cstdint>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

#include <QSignalSpy>

#include "session/SessionFixture_test.h"
#include "support/ForkedChild.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

using Rows = std::vector<FolderCompareRow>;

constexpr std::int64_t MiB = 1048576;

// On screen is
// /l           9 MiB
//   big/       8
//     deep/    6
//       film   6
//     song     2
//   note      10 bytes
// and /r, which the panel gives, holds
//   big/       5
//     deep/    5
//       film   5
//   other     20 bytes
class Comparing : public SessionFixture {
 protected:
  const DiskNode left_ =
      folder("/l", 9 * MiB,
             {folder("/l/big", 8 * MiB,
                     {folder("/l/big/deep", 6 * MiB, {file("/l/big/deep/film", 6 * MiB)}),
                      file("/l/big/song", 2 * MiB)}),
              file("/l/note", 10)});
  const DiskNode right_ =
      folder("/r", 5 * MiB,
             {folder("/r/big", 5 * MiB,
                     {folder("/r/big/deep", 5 * MiB, {file("/r/big/deep/film", 5 * MiB)})}),
              file("/r/other", 20)});
  // The expected differences. deep/ differs by exactly the smallest listed difference; its film is
  // too deep to be listed.
  const Rows rows_ = {{".", 9 * MiB, 5 * MiB},  {"big", 8 * MiB, 5 * MiB},
                      {"big/song", 2 * MiB, 0}, {"big/deep", 6 * MiB, 5 * MiB},
                      {"other", 0, 20},         {"note", 10, 0}};

  void SetUp() override {
    scanTo(left_);
    folderPanel_.answer = "/r";
  }

  // Sets the result of the next walk.
  void bring(const DiskNode& tree) { walks().at(walks().ran()).result = tree; }

  void compareWith(const DiskNode& tree) {
    bring(tree);
    folderPanel_.answer = tree.path();
    session().compareWithFolder();
    dispatch().drainAll();
  }
};

TEST_F(Comparing, comparing_asks_for_a_folder) {
  session().compareWithFolder();
  ASSERT_EQ(folderPanel_.requests.size(), 1u);
  EXPECT_EQ(folderPanel_.requests[0].prompt, "Compare");
  EXPECT_EQ(folderPanel_.requests[0].message, "Choose a folder to compare with the current map.");
}

TEST_F(Comparing, comparing_does_nothing_if_the_panel_is_cancelled) {
  folderPanel_.answer = std::nullopt;
  session().compareWithFolder();
  EXPECT_EQ(session().shown().vizMode(), VizMode::treemap);
  EXPECT_EQ(session().comparison().compareLeftName(), "");
  EXPECT_EQ(session().comparison().compareRightName(), "");
  EXPECT_EQ(dispatch().waiting(Queue::userInitiated), 0u);
}

TEST_F(Comparing, mode_and_names_are_set_before_the_walk) {
  folderPanel_.answer = "/backup/old r/";
  QSignalSpy names(&session().comparison(), &Comparison::compareNamesChanged);
  QSignalSpy mode(&session().shown(), &Shown::vizModeChanged);
  session().compareWithFolder();
  EXPECT_EQ(session().shown().vizMode(), VizMode::compare);
  EXPECT_EQ(session().comparison().compareLeftName(), "l");
  EXPECT_EQ(session().comparison().compareRightName(), "old r");
  EXPECT_EQ(names.count(), 1);
  EXPECT_EQ(mode.count(), 1);
  EXPECT_EQ(walks().ran(), 1u);
  EXPECT_EQ(dispatch().waiting(Queue::userInitiated), 1u);
}

TEST_F(Comparing, the_root_of_the_disk_is_named_system_disk_or_slash) {
  DiskNode::Fields fields;
  fields.name = "Macintosh HD";
  fields.path = "/";
  fields.size = 5;
  fields.isDir = true;
  scanTo(DiskNode(fields));
  folderPanel_.answer = "/";
  session().compareWithFolder();
  EXPECT_EQ(session().comparison().compareLeftName(), "System Disk");
  EXPECT_EQ(session().comparison().compareRightName(), "/");
}

TEST_F(Comparing, names_are_announced_only_if_they_change) {
  session().compareWithFolder();
  QSignalSpy names(&session().comparison(), &Comparison::compareNamesChanged);
  session().compareWithFolder();
  EXPECT_EQ(names.count(), 0);
  folderPanel_.answer = "/s";
  session().compareWithFolder();
  EXPECT_EQ(names.count(), 1);
  dispatch().drainAll();
  scanTo(folder("/m", 5));
  session().compareWithFolder();
  EXPECT_EQ(names.count(), 2);
  EXPECT_EQ(session().comparison().compareLeftName(), "m");
}

TEST_F(Comparing, the_chosen_folder_is_walked_without_excludes_or_progress) {
  std::vector<BloatFilter> filters = BloatFilter::catalog();
  for (BloatFilter& filter : filters) filter.skipScan = true;
  session().choices().setFilters(filters);
  session().choices().setExcludes({"/r/big"});
  session().compareWithFolder();
  EXPECT_EQ(dispatch().waiting(Queue::utility), 0u);
  runWalks();
  ASSERT_EQ(walks().ran(), 2u);
  const WalkScript& walk = walks().at(1);
  EXPECT_EQ(walk.root, "/r");
  EXPECT_FALSE(walk.hadProgress);
  EXPECT_TRUE(walk.options.extraNames.empty());
  EXPECT_TRUE(walk.options.extraSuffixes.empty());
  EXPECT_TRUE(walk.options.extraPrefixes.empty());
  EXPECT_FALSE(walk.options.expandPackages);
}

TEST_F(Comparing, differences_in_the_first_three_levels_are_listed) {
  bring(right_);
  session().compareWithFolder();
  QSignalSpy rows(&session().comparison(), &Comparison::compareRowsChanged);
  runWalks();
  EXPECT_TRUE(session().comparison().compareRows().empty());
  runMain();
  EXPECT_EQ(session().comparison().compareRows(), rows_);
  EXPECT_EQ(rows.count(), 1);
}

TEST_F(Comparing, the_smallest_listed_difference_is_one_mebibyte) {
  scanTo(folder("/l", 9 * MiB, {file("/l/a", 3 * MiB), file("/l/b", 3 * MiB)}));
  compareWith(folder("/r", 9 * MiB, {file("/r/a", 4 * MiB), file("/r/b", 4 * MiB - 1)}));
  EXPECT_EQ(session().comparison().compareRows(), (Rows{{"a", 3 * MiB, 4 * MiB}}));
}

TEST_F(Comparing, the_root_of_the_scan_is_compared_and_not_the_node_on_screen) {
  session().open(session().navigation().current()->children().front());
  ASSERT_EQ(session().navigation().current()->path(), "/l/big");
  bring(right_);
  session().compareWithFolder();
  EXPECT_EQ(session().comparison().compareLeftName(), "l");
  dispatch().drainAll();
  EXPECT_EQ(session().comparison().compareRows(), rows_);
  EXPECT_EQ(stackPaths(), (std::vector<std::string>{"/l", "/l/big"}));
}

TEST_F(Comparing, comparing_changes_neither_the_map_nor_the_state_of_scans) {
  session().shown().setPane(MainPane::apps);
  session().selection().setFocused(file("/l/note", 10));
  compareWith(right_);
  EXPECT_EQ(session().run().status(), ScanStatus::complete);
  EXPECT_EQ(session().run().progress(), "");
  EXPECT_EQ(session().run().scanPercent(), 1);
  EXPECT_EQ(session().run().scanRoot(), "/l");
  EXPECT_EQ(session().shown().pane(), MainPane::apps);
  EXPECT_EQ(session().selection().focused()->path(), "/l/note");
  EXPECT_EQ(session().navigation().stack(), std::vector<DiskNode>{left_});
}

TEST_F(Comparing, old_rows_stay_until_the_new_ones_arrive) {
  compareWith(right_);
  ASSERT_EQ(session().comparison().compareRows(), rows_);
  bring(folder("/s", 9 * MiB));
  folderPanel_.answer = "/s";
  session().compareWithFolder();
  EXPECT_EQ(session().comparison().compareRightName(), "s");
  EXPECT_EQ(session().comparison().compareRows(), rows_);
  runWalks();
  EXPECT_EQ(session().comparison().compareRows(), rows_);
  runMain();
  EXPECT_EQ(session().comparison().compareRows(), (Rows{{"big", 8 * MiB, 0},
                                                        {"big/deep", 6 * MiB, 0},
                                                        {"big/song", 2 * MiB, 0},
                                                        {"note", 10, 0}}));
}

TEST_F(Comparing, old_rows_stay_if_the_next_panel_is_cancelled) {
  compareWith(right_);
  folderPanel_.answer = std::nullopt;
  session().compareWithFolder();
  EXPECT_EQ(session().comparison().compareRows(), rows_);
  EXPECT_EQ(session().comparison().compareRightName(), "r");
}

TEST_F(Comparing, equal_trees_clear_the_rows) {
  compareWith(right_);
  compareWith(left_);
  EXPECT_TRUE(session().comparison().compareRows().empty());
}

TEST_F(Comparing, names_that_are_not_utf8_keep_their_bytes) {
  scanTo(folder("/l\xff", 9, {file("/l\xff/caf\xe9", 9)}));
  compareWith(folder("/r\xfe", 9, {file("/r\xfe/caf\xe8", 9)}));
  EXPECT_EQ(session().comparison().compareLeftName(), "l\xff");
  EXPECT_EQ(session().comparison().compareRightName(), "r\xfe");
  EXPECT_EQ(session().comparison().compareRows(), (Rows{{"caf\xe8", 0, 9}, {"caf\xe9", 9, 0}}));
}

// Overlapping comparisons and scans.

TEST_F(Comparing, an_earlier_comparison_that_ends_later_overwrites_the_newer_one) {
  // The second comparison runs completely during the first walk.
  walks().at(1).result = right_;
  walks().at(1).during = [&](const DiskScanner::Callbacks&) {
    compareWith(folder("/s", 9 * MiB));
    EXPECT_EQ(session().comparison().compareRows().size(), 4u);
    EXPECT_EQ(session().comparison().compareRightName(), "s");
  };
  session().compareWithFolder();
  dispatch().drainAll();
  EXPECT_EQ(session().comparison().compareRows(), rows_);
  EXPECT_EQ(session().comparison().compareRightName(), "s");
}

TEST_F(Comparing, a_scan_and_a_cancel_do_not_stop_a_comparison) {
  bool wasCancelled = true;
  walks().at(1).result = right_;
  walks().at(1).during = [&](const DiskScanner::Callbacks& callbacks) {
    scanTo(folder("/m", 5, {file("/m/f", 5)}));
    session().run().cancel();
    wasCancelled = callbacks.isCancelled && callbacks.isCancelled();
  };
  session().compareWithFolder();
  dispatch().drainAll();
  EXPECT_FALSE(wasCancelled);
  // The left side is the tree that was on screen when the comparison began.
  EXPECT_EQ(session().comparison().compareRows(), rows_);
  EXPECT_EQ(session().comparison().compareLeftName(), "l");
  EXPECT_EQ(stackPaths(), std::vector<std::string>{"/m"});
}

TEST_F(Comparing, rows_arrive_during_a_rescan) {
  bring(right_);
  session().compareWithFolder();
  runWalks();
  session().rescan();
  runMain();
  EXPECT_EQ(session().run().status(), ScanStatus::scanning);
  EXPECT_EQ(session().comparison().compareRows(), rows_);
}

TEST_F(Comparing, rows_arrive_whatever_mode_is_shown) {
  bring(right_);
  session().compareWithFolder();
  session().shown().setVizMode(VizMode::largest);
  dispatch().drainAll();
  EXPECT_EQ(session().shown().vizMode(), VizMode::largest);
  EXPECT_EQ(session().comparison().compareRows(), rows_);
}

// End of the session.

TEST_F(Comparing, the_end_of_the_session_cancels_the_walk) {
  bool wasCancelled = false;
  walks().at(1).result = right_;
  walks().at(1).during = [&](const DiskScanner::Callbacks& callbacks) {
    endSession();
    wasCancelled = callbacks.isCancelled();
  };
  session().compareWithFolder();
  dispatch().drainAll();
  EXPECT_TRUE(walks().at(1).hasRun);
  EXPECT_TRUE(wasCancelled);
}

TEST_F(Comparing, a_result_after_the_end_of_the_session_is_harmless) {
  bring(right_);
  session().compareWithFolder();
  runWalks();
  endSession();
  EXPECT_GT(dispatch().drain(Queue::main), 0u);
}

TEST_F(Comparing, a_receiver_of_the_mode_change_may_end_the_session) {
  QObject::connect(&session().shown(), &Shown::vizModeChanged, [this] { endSession(); });
  session().compareWithFolder();
  EXPECT_FALSE(hasSession());
  dispatch().drainAll();
}

// What happens while the panel runs the event loop; and comparisons of real folders.

class BusyPanel final : public FolderPanel {
 public:
  std::optional<std::string> chooseFolder(const Request&) override {
    if (meanwhile) meanwhile();
    return answer;
  }

  std::function<void()> meanwhile;
  std::optional<std::string> answer;
};

class ComparingRealFolders : public ::testing::Test {
 protected:
  void scan(const std::string& root) {
    session_->scan(root);
    dispatch_.drainAll();
    ASSERT_EQ(session_->run().status(), ScanStatus::complete);
  }

  Rows compareWith(const std::string& path) {
    panel_.answer = path;
    session_->compareWithFolder();
    dispatch_.drainAll();
    return session_->comparison().compareRows();
  }

  FakeMachine machine_;
  HandSteppedDispatch& dispatch_ = machine_.dispatch;
  BusyPanel panel_;
  std::unique_ptr<ScanSession> session_ =
      std::make_unique<ScanSession>(machine_.services("/", dispatch_, panel_));
};

TEST_F(ComparingRealFolders, comparing_without_a_tree_asks_for_a_folder_and_stops) {
  bool wasAsked = false;
  panel_.meanwhile = [&] { wasAsked = true; };
  compareWith("/");
  EXPECT_TRUE(wasAsked);
  EXPECT_EQ(session_->shown().vizMode(), VizMode::treemap);
  EXPECT_EQ(session_->comparison().compareRightName(), "");
  EXPECT_TRUE(session_->comparison().compareRows().empty());
}

TEST_F(ComparingRealFolders, the_tree_on_screen_when_the_panel_closes_is_compared) {
  const TempTree tree("first/\n  a 400K\nsecond/\n  b 400K\n");
  scan(tree.at("first"));
  panel_.meanwhile = [&] { scan(tree.at("second")); };
  EXPECT_EQ(compareWith(tree.at("second")), Rows{});
  EXPECT_EQ(session_->comparison().compareLeftName(), "second");
}

TEST_F(ComparingRealFolders, the_session_may_end_while_the_panel_is_open) {
  const TempTree tree("a 400K\n");
  scan(tree.path());
  panel_.meanwhile = [&] { session_.reset(); };
  panel_.answer = tree.path();
  session_->compareWithFolder();
  EXPECT_EQ(dispatch_.drain(Dispatch::Queue::userInitiated), 0u);
}

TEST_F(ComparingRealFolders, a_folder_does_not_differ_from_itself) {
  const TempTree tree(R"(
    Downloads/
      note 10
      caf\xe9/
        \xff\xfe 2M
        empty/
    Tool.app/
      binary 3M
    many/
      part## 1M x100
    small## 4K x20
    zero/
  )");
  scan(tree.path());
  ASSERT_GT(session_->result().scanStats()->nodes, 80);
  EXPECT_EQ(compareWith(tree.path()), Rows{});
  EXPECT_EQ(session_->shown().vizMode(), VizMode::compare);
}

TEST_F(ComparingRealFolders, a_folder_does_not_differ_from_its_copy) {
  const char* const items = R"(
    caf\xe9/
      \xff\xfe 2M
    film 2M
  )";
  const TempTree left(items);
  const TempTree right(items);
  scan(left.path());
  EXPECT_EQ(compareWith(right.path()), Rows{});
  EXPECT_NE(session_->comparison().compareLeftName(), session_->comparison().compareRightName());
}

TEST_F(ComparingRealFolders, items_added_and_removed_since_the_scan_are_listed) {
  TempTree tree(R"(
    caf\xe9/
      \xff\xfe 2M
    film 2M
  )");
  scan(tree.path());
  tree.plant("caf\xe9", R"(\xff\xfd 3M)");
  ASSERT_EQ(unlink(tree.at("film").c_str()), 0);
  EXPECT_EQ(compareWith(tree.path()), (Rows{{"caf\xe9", 2 * MiB, 5 * MiB},
                                            {"caf\xe9/\xff\xfd", 0, 3 * MiB},
                                            {"film", 2 * MiB, 0},
                                            {".", 4 * MiB, 5 * MiB}}));
}

TEST_F(ComparingRealFolders, everything_on_the_left_is_listed_if_the_right_side_is_empty) {
  const TempTree tree("l/\n  film 2M\nempty/\nfile 2M\n");
  const Rows allOfLeft = {{".", 2 * MiB, 0}, {"film", 2 * MiB, 0}};
  scan(tree.at("l"));
  EXPECT_EQ(compareWith(tree.at("empty")), allOfLeft);
  EXPECT_EQ(session_->run().status(), ScanStatus::complete);
  EXPECT_EQ(session_->run().errorMessage(), "");
}

TEST_F(ComparingRealFolders, a_missing_folder_and_a_file_count_as_empty) {
  const TempTree tree("l/\n  film 2M\nfile 2M\n");
  const Rows allOfLeft = {{".", 2 * MiB, 0}, {"film", 2 * MiB, 0}};
  for (const char* right : {"gone", "file"}) {
    scan(tree.at("l"));
    EXPECT_EQ(compareWith(tree.at(right)), allOfLeft) << right;
    EXPECT_EQ(session_->comparison().compareRightName(), right);
    EXPECT_EQ(session_->run().status(), ScanStatus::complete);
    EXPECT_EQ(session_->run().errorMessage(), "");
    EXPECT_NE(compareWith(tree.at("l")), allOfLeft);
  }
}

TEST_F(ComparingRealFolders, an_unreadable_folder_counts_as_empty) {
  const TempTree tree(R"(
    l/
      film 2M
    locked/ mode=0
      film 2M
    half/
      locked/ mode=0
        film 2M
      film 2M
  )");
  const Rows allOfLeft = {{".", 2 * MiB, 0}, {"film", 2 * MiB, 0}};
  const std::string complaint = asOtherUser([&]() -> std::string {
    scan(tree.at("l"));
    if (compareWith(tree.at("locked")) != allOfLeft) return "the locked folder is not empty";
    if (!session_->run().errorMessage().empty()) return session_->run().errorMessage();
    return compareWith(tree.at("half")).empty() ? "" : "what can be read does not count";
  });
  EXPECT_EQ(complaint, "");
}

TEST_F(ComparingRealFolders, a_link_to_the_chosen_folder_is_followed) {
  const TempTree tree(R"(
    l/
      film 2M
    r/
      film 4M
    link -> r
  )");
  scan(tree.at("l"));
  EXPECT_EQ(compareWith(tree.at("link")),
            (Rows{{".", 2 * MiB, 4 * MiB}, {"film", 2 * MiB, 4 * MiB}}));
  EXPECT_EQ(session_->comparison().compareRightName(), "link");
  EXPECT_EQ(compareWith(tree.at("r/")),
            (Rows{{".", 2 * MiB, 4 * MiB}, {"film", 2 * MiB, 4 * MiB}}));
  EXPECT_EQ(session_->comparison().compareRightName(), "r");
}

TEST_F(ComparingRealFolders, remainders_are_compared_like_any_item) {
  const TempTree tree(R"(
    l/
      part## 1M x90
    r/
      part## 1M x93
  )");
  scan(tree.at("l"));
  EXPECT_EQ(compareWith(tree.at("r")),
            (Rows{{".", 90 * MiB, 93 * MiB}, {"__rest__", 10 * MiB, 13 * MiB}}));
}

}  // namespace
}  // namespace tessaly
