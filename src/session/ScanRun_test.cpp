#include <chrono>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include <QSignalSpy>

#include "session/SessionFixture_test.h"

namespace tessaly {
namespace {

using Scan = SessionFixture;

const DiskNode treeOfA = folder("/a", 700, {file("/a/x", 700)});
const DiskNode treeOfB = folder("/b", 300, {file("/b/y", 300)});

// Starting from every state.

TEST_F(Scan, a_scan_shows_that_it_runs_before_the_walk) {
  session().shown().setPane(MainPane::monitor);
  session().scan("/a");
  EXPECT_EQ(session().shown().pane(), MainPane::map);
  EXPECT_EQ(session().run().status(), ScanStatus::scanning);
  EXPECT_EQ(session().run().progress(), "Scanning started…");
  EXPECT_EQ(session().run().scanPercent(), 0);
  EXPECT_EQ(session().run().errorMessage(), "");
  EXPECT_EQ(session().run().scanRoot(), "/a");
  EXPECT_EQ(walks().ran(), 0u);
  EXPECT_EQ(dispatch().waiting(Queue::userInitiated), 1u);
  EXPECT_EQ(dispatch().waiting(Queue::main), 0u);
}

TEST_F(Scan, a_scan_starts_from_every_state) {
  session().scan("/a");  // idle
  session().scan("/a");  // scanning
  EXPECT_EQ(session().run().status(), ScanStatus::scanning);
  dispatch().drainAll();
  ASSERT_EQ(session().run().status(), ScanStatus::error);
  session().scan("/a");
  EXPECT_EQ(session().run().status(), ScanStatus::scanning);
  EXPECT_EQ(session().run().errorMessage(), "");
  walks().at(walks().ran()).result = treeOfA;
  dispatch().drainAll();
  ASSERT_EQ(session().run().status(), ScanStatus::complete);
  session().scan("/b");
  EXPECT_EQ(session().run().status(), ScanStatus::scanning);
  EXPECT_EQ(session().run().scanPercent(), 0);
}

TEST_F(Scan, the_old_tree_stays_during_a_scan) {
  scanTo(treeOfA);
  session().scan("/b");
  runWalks();
  EXPECT_EQ(stackPaths(), std::vector<std::string>{"/a"});
}

// The walk.

TEST_F(Scan, a_scan_walks_its_root_with_the_options_of_filters_and_excludes) {
  std::vector<BloatFilter> filters = {
      {.id = "a",
       .name = "A",
       .patterns = {"node_modules", ".ISO"},
       .symbol = "s",
       .skipScan = true},
      {.id = "b", .name = "B", .patterns = {"dist"}, .symbol = "s", .enabled = true}};
  session().choices().setFilters(filters);
  session().choices().setExcludes({"/a/private"});
  session().scan("/a");
  // The options are copied by now; later changes apply to the next scan.
  session().choices().setFilters({});
  session().choices().setExcludes({});
  dispatch().drainAll();
  const WalkScript& walk = walks().at(0);
  ASSERT_TRUE(walk.hasRun);
  EXPECT_EQ(walk.root, "/a");
  EXPECT_TRUE(walk.hadProgress);
  EXPECT_EQ(walk.options.extraNames, (std::unordered_set<std::string>{"node_modules"}));
  EXPECT_EQ(walk.options.extraSuffixes, (std::unordered_set<std::string>{".iso"}));
  EXPECT_EQ(walk.options.extraPrefixes, std::vector<std::string>{"/a/private"});
  EXPECT_FALSE(walk.options.expandPackages);
}

TEST_F(Scan, nothing_is_left_out_without_filters) {
  session().choices().setFilters({});
  session().scan("/a");
  dispatch().drainAll();
  EXPECT_TRUE(walks().at(0).options.extraNames.empty());
  EXPECT_TRUE(walks().at(0).options.extraSuffixes.empty());
}

TEST_F(Scan, a_scan_shows_the_newest_progress_of_its_walk) {
  walks().at(0).during = [](const DiskScanner::Callbacks& callbacks) {
    callbacks.percent(0.0);
    callbacks.progress("0%  Library");
    callbacks.percent(0.37);
    callbacks.progress("37%  Music");
  };
  session().scan("/a");
  QSignalSpy progress(&session().run(), &ScanRun::progressChanged);
  QSignalSpy percent(&session().run(), &ScanRun::scanPercentChanged);
  runWalks();
  EXPECT_EQ(session().run().progress(), "Scanning started…");
  dispatch().step(Queue::main);
  dispatch().step(Queue::main);
  EXPECT_EQ(session().run().progress(), "37%  Music");
  EXPECT_EQ(session().run().scanPercent(), 0.37);
  EXPECT_EQ(progress.count(), 1);
  EXPECT_EQ(percent.count(), 1);
}

TEST_F(Scan, progress_does_not_flood_the_main_queue) {
  walks().at(0).during = [](const DiskScanner::Callbacks& callbacks) {
    for (int k = 0; k < 100'000; ++k) {
      callbacks.progress(std::to_string(k));
      callbacks.percent(k / 100'000.0);
    }
  };
  session().scan("/a");
  runWalks();
  // A line, a percentage and the end.
  EXPECT_EQ(dispatch().waiting(Queue::main), 3u);
  dispatch().step(Queue::main);
  dispatch().step(Queue::main);
  EXPECT_EQ(session().run().status(), ScanStatus::scanning);
  EXPECT_EQ(session().run().progress(), "99999");
  EXPECT_EQ(session().run().scanPercent(), 0.99999);
}

TEST_F(Scan, progress_keeps_bytes_that_are_not_utf8) {
  walks().at(0).during = [](const DiskScanner::Callbacks& callbacks) {
    callbacks.progress("3%  caf\xe9");
  };
  session().scan("/a");
  runWalks();
  dispatch().step(Queue::main);
  EXPECT_EQ(session().run().progress(), "3%  caf\xe9");
}

// The walk has found something.

TEST_F(Scan, a_scan_puts_its_tree_on_screen) {
  walks().at(0).result = treeOfA;
  session().scan("/a");
  dispatch().drainAll();
  EXPECT_EQ(session().run().status(), ScanStatus::complete);
  EXPECT_EQ(session().run().progress(), "");
  EXPECT_EQ(session().run().scanPercent(), 1);
  ASSERT_EQ(session().navigation().stack().size(), 1u);
  EXPECT_EQ(session().navigation().stack()[0], treeOfA);
  EXPECT_EQ(session().navigation().current(), treeOfA);
}

TEST_F(Scan, a_new_tree_replaces_the_whole_stack) {
  scanTo(folder("/a", 9, {folder("/a/d", 9, {file("/a/d/f", 9)})}));
  session().open(session().navigation().current()->children().front());
  ASSERT_EQ(session().navigation().stack().size(), 2u);
  scanTo(treeOfA);
  EXPECT_EQ(stackPaths(), std::vector<std::string>{"/a"});
}

TEST_F(Scan, the_result_counts_the_tree_and_the_seconds_of_the_scan) {
  walks().at(0).result =
      folder("/a", 900, {folder("/a/d", 800, {file("/a/d/f", 800)}), file("/a/x", 100)});
  session().scan("/a");
  now_ += std::chrono::milliseconds(2500);
  dispatch().drainAll();
  ASSERT_TRUE(session().result().scanStats());
  EXPECT_EQ(*session().result().scanStats(),
            (ScanStats{.nodes = 4, .files = 2, .folders = 2, .duration = 2.5, .bytes = 900}));
}

TEST_F(Scan, the_seconds_count_from_the_start_of_the_last_scan) {
  session().scan("/b");
  now_ += std::chrono::seconds(10);
  walks().at(1).result = treeOfA;
  session().scan("/a");
  now_ += std::chrono::seconds(1);
  dispatch().drainAll();
  EXPECT_EQ(session().result().scanStats()->duration, 1);
}

TEST_F(Scan, a_tree_needs_a_size_or_children) {
  scanTo(folder("/a", 0, {folder("/a/empty", 0)}));
  EXPECT_EQ(stackPaths(), std::vector<std::string>{"/a"});
  scanTo(folder("/b", 10));
  EXPECT_EQ(stackPaths(), std::vector<std::string>{"/b"});
}

TEST_F(Scan, a_scan_keeps_selection_and_focus) {
  session().selection().setFocused(file("/old", 1));
  session().shown().setMenuNode(file("/menu", 1));
  scanTo(treeOfA);
  EXPECT_EQ(session().selection().focused()->path(), "/old");
  EXPECT_EQ(session().shown().menuNode()->path(), "/menu");
}

// The walk has read nothing.

TEST_F(Scan, a_scan_that_reads_nothing_fails_without_a_tree) {
  session().scan("/locked");
  dispatch().drainAll();
  EXPECT_EQ(session().run().status(), ScanStatus::error);
  EXPECT_EQ(session().run().errorMessage(),
            "Nothing readable at /locked. Check its permissions or pick another folder.");
  EXPECT_TRUE(session().navigation().stack().empty());
  EXPECT_FALSE(session().result().scanStats());
  EXPECT_EQ(session().run().scanRoot(), "/locked");
}

TEST_F(Scan, a_scan_that_reads_nothing_keeps_the_old_tree_without_an_error) {
  scanTo(treeOfA);
  session().scan("/locked");
  dispatch().drainAll();
  EXPECT_EQ(session().run().status(), ScanStatus::complete);
  EXPECT_EQ(session().run().errorMessage(), "");
  EXPECT_EQ(stackPaths(), std::vector<std::string>{"/a"});
}

// Cancel.

TEST_F(Scan, cancelling_the_first_scan_leaves_an_idle_session_with_its_root) {
  session().scan("/a");
  session().run().cancel();
  EXPECT_EQ(session().run().status(), ScanStatus::idle);
  EXPECT_TRUE(session().navigation().stack().empty());
  EXPECT_EQ(session().run().scanRoot(), "/a");
  EXPECT_EQ(session().run().progress(), "");
  EXPECT_EQ(session().run().scanPercent(), 0);
}

TEST_F(Scan, cancelling_a_later_scan_leaves_the_old_tree) {
  scanTo(treeOfA);
  session().scan("/b");
  session().run().cancel();
  EXPECT_EQ(session().run().status(), ScanStatus::complete);
  EXPECT_EQ(session().run().scanPercent(), 0);
  EXPECT_EQ(stackPaths(), std::vector<std::string>{"/a"});
  EXPECT_EQ(session().run().scanRoot(), "/b");
}

TEST_F(Scan, cancelling_every_rescan_leaves_the_old_tree) {
  scanTo(treeOfA);
  for (int i = 0; i < 2; ++i) {
    session().rescan();
    session().run().cancel();
    EXPECT_EQ(session().run().status(), ScanStatus::complete);
  }
}

TEST_F(Scan, cancelling_tells_the_walk_and_drops_its_result) {
  std::vector<bool> polled;
  walks().at(0).during = [&](const DiskScanner::Callbacks& callbacks) {
    polled.push_back(callbacks.isCancelled());
    session().run().cancel();
    polled.push_back(callbacks.isCancelled());
    callbacks.progress("Cancelled");
  };
  walks().at(0).result = treeOfA;
  session().scan("/a");
  dispatch().drainAll();
  EXPECT_EQ(polled, (std::vector<bool>{false, true}));
  EXPECT_EQ(session().run().status(), ScanStatus::idle);
  EXPECT_EQ(session().run().progress(), "");
  EXPECT_TRUE(session().navigation().stack().empty());
}

TEST_F(Scan, cancelling_after_the_walk_has_ended_drops_its_result) {
  walks().at(0).during = [](const DiskScanner::Callbacks& callbacks) {
    EXPECT_FALSE(callbacks.isCancelled());
    callbacks.progress("Building map…");
    callbacks.percent(1);
  };
  walks().at(0).result = treeOfA;
  session().scan("/a");
  runWalks();
  session().run().cancel();
  runMain();
  EXPECT_EQ(session().run().status(), ScanStatus::idle);
  EXPECT_TRUE(session().navigation().stack().empty());
  EXPECT_EQ(session().run().progress(), "");
  EXPECT_EQ(session().run().scanPercent(), 0);
  EXPECT_FALSE(session().result().scanStats());
}

TEST_F(Scan, cancelling_is_allowed_without_a_scan) {
  session().run().cancel();
  EXPECT_EQ(session().run().status(), ScanStatus::idle);
  session().scan("/locked");
  dispatch().drainAll();
  ASSERT_EQ(session().run().status(), ScanStatus::error);
  session().run().cancel();
  EXPECT_EQ(session().run().status(), ScanStatus::idle);
  EXPECT_EQ(session().run().errorMessage(), "");
  scanTo(treeOfA);
  session().run().cancel();
  EXPECT_EQ(session().run().status(), ScanStatus::complete);
  EXPECT_EQ(stackPaths(), std::vector<std::string>{"/a"});
}

// Rescan.

TEST_F(Scan, rescan_does_nothing_without_a_root) {
  session().rescan();
  EXPECT_EQ(session().run().status(), ScanStatus::idle);
  EXPECT_EQ(dispatch().waiting(Queue::userInitiated), 0u);
}

TEST_F(Scan, rescan_walks_the_root_of_the_latest_scan_even_if_cancelled) {
  scanTo(treeOfA);
  session().scan("/b");
  session().run().cancel();
  dispatch().drainAll();
  session().rescan();
  EXPECT_EQ(session().run().status(), ScanStatus::scanning);
  dispatch().drainAll();
  ASSERT_EQ(walks().ran(), 3u);
  EXPECT_EQ(walks().at(2).root, "/b");
}

TEST_F(Scan, rescan_of_the_same_root_keeps_its_name) {
  const std::string root = "/a folder whose name is too long to be kept inside of a string object";
  session().scan(root);
  session().rescan();
  EXPECT_EQ(session().run().scanRoot(), root);
  dispatch().drainAll();
  EXPECT_EQ(walks().at(1).root, root);
}

// A scan that replaces another.

TEST_F(Scan, a_scan_of_another_folder_drops_everything_of_the_first) {
  std::vector<std::string> lines;
  QObject::connect(&session().run(), &ScanRun::progressChanged,
                   [&] { lines.push_back(session().run().progress()); });
  std::vector<std::vector<std::string>> stacks;
  QObject::connect(&session().navigation(), &Navigation::stackChanged,
                   [&] { stacks.push_back(stackPaths()); });
  walks().at(0).during = [&](const DiskScanner::Callbacks& callbacks) {
    callbacks.progress("1%  of a");
    EXPECT_FALSE(callbacks.isCancelled());
    session().scan("/b");
    EXPECT_TRUE(callbacks.isCancelled());
    callbacks.progress("Cancelled");
    callbacks.percent(0.9);
  };
  walks().at(0).result = treeOfA;
  walks().at(1).during = [](const DiskScanner::Callbacks& callbacks) {
    EXPECT_FALSE(callbacks.isCancelled());
    callbacks.progress("2%  of b");
    callbacks.percent(0.02);
  };
  walks().at(1).result = treeOfB;
  session().scan("/a");
  dispatch().step(Queue::userInitiated);
  dispatch().drainAll();
  EXPECT_EQ(session().run().status(), ScanStatus::complete);
  EXPECT_EQ(stacks, (std::vector<std::vector<std::string>>{{"/b"}}));
  EXPECT_EQ(lines, (std::vector<std::string>{"Scanning started…", "2%  of b", ""}));
}

TEST_F(Scan, a_replaced_scan_may_end_after_its_successor) {
  // The second scan runs completely during the first walk.
  walks().at(0).result = treeOfA;
  walks().at(1).result = treeOfB;
  walks().at(0).during = [&](const DiskScanner::Callbacks& callbacks) {
    session().scan("/b");
    dispatch().drainAll();
    EXPECT_EQ(session().run().status(), ScanStatus::complete);
    callbacks.progress("99%  of a");
    callbacks.percent(0.99);
    EXPECT_TRUE(callbacks.isCancelled());
  };
  session().scan("/a");
  dispatch().drainAll();
  EXPECT_EQ(session().run().status(), ScanStatus::complete);
  EXPECT_EQ(session().run().progress(), "");
  EXPECT_EQ(session().run().scanPercent(), 1);
  EXPECT_EQ(stackPaths(), std::vector<std::string>{"/b"});
  EXPECT_EQ(session().run().scanRoot(), "/b");
}

TEST_F(Scan, a_cancelled_scan_does_not_touch_its_successor) {
  walks().at(0).result = treeOfA;
  session().scan("/a");
  runWalks();
  session().run().cancel();
  session().scan("/b");
  runMain();
  EXPECT_EQ(session().run().status(), ScanStatus::scanning);
  EXPECT_EQ(session().run().progress(), "Scanning started…");
  EXPECT_TRUE(session().navigation().stack().empty());
}

// End of the session.

TEST_F(Scan, a_scan_that_ends_with_its_session_is_harmless) {
  bool wasCancelled = false;
  walks().at(0).during = [&](const DiskScanner::Callbacks& callbacks) {
    callbacks.progress("1%  of a");
    endSession();
    callbacks.progress("2%  of a");
    callbacks.percent(0.02);
    wasCancelled = callbacks.isCancelled();
  };
  walks().at(0).result = treeOfA;
  session().scan("/a");
  dispatch().drainAll();
  EXPECT_TRUE(walks().at(0).hasRun);
  EXPECT_TRUE(wasCancelled);
}

TEST_F(Scan, a_walk_may_end_after_its_session) {
  walks().at(0).result = treeOfA;
  session().scan("/a");
  runWalks();
  endSession();
  EXPECT_GT(dispatch().drain(Queue::main), 0u);
}

// The roots of scans.

TEST_F(Scan, scan_home_scans_the_configured_home) {
  session().scanHome();
  EXPECT_EQ(session().run().scanRoot(), "/home/user");
  dispatch().drainAll();
  EXPECT_EQ(walks().at(0).root, "/home/user");
}

TEST_F(Scan, scan_folder_asks_for_a_folder) {
  folderPanel_.answer = "/chosen\xff";
  session().chooseFolder();
  ASSERT_EQ(folderPanel_.requests.size(), 1u);
  EXPECT_EQ(folderPanel_.requests[0].prompt, "Scan");
  EXPECT_EQ(folderPanel_.requests[0].message, "Choose a folder to map.");
  EXPECT_EQ(session().run().status(), ScanStatus::scanning);
  dispatch().drainAll();
  EXPECT_EQ(walks().at(0).root, "/chosen\xff");
}

TEST_F(Scan, scan_folder_does_nothing_if_the_panel_is_cancelled) {
  session().chooseFolder();
  EXPECT_EQ(folderPanel_.requests.size(), 1u);
  EXPECT_EQ(session().run().status(), ScanStatus::idle);
  EXPECT_EQ(session().run().scanRoot(), "");
}

}  // namespace
}  // namespace tessaly
