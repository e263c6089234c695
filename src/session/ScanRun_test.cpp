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

// From "any" state, scan.

TEST_F(Scan, shows_that_it_runs_before_anything_is_walked) {
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

TEST_F(Scan, starts_from_every_state) {
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

TEST_F(Scan, leaves_the_old_tree_in_place_while_it_runs) {
  scanTo(treeOfA);
  session().scan("/b");
  runWalks();
  EXPECT_EQ(stackPaths(), std::vector<std::string>{"/a"});
}

// The walk.

TEST_F(Scan, walks_its_root_with_what_filters_and_excludes_leave_out) {
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
  // Copied by now: what changes later is for the next scan.
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

TEST_F(Scan, leaves_nothing_out_without_filters) {
  session().choices().setFilters({});
  session().scan("/a");
  dispatch().drainAll();
  EXPECT_TRUE(walks().at(0).options.extraNames.empty());
  EXPECT_TRUE(walks().at(0).options.extraSuffixes.empty());
}

TEST_F(Scan, shows_the_newest_progress_of_its_walk) {
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

TEST_F(Scan, floods_the_main_queue_with_no_progress) {
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

TEST_F(Scan, takes_progress_that_is_not_utf8_as_the_bytes_it_is) {
  walks().at(0).during = [](const DiskScanner::Callbacks& callbacks) {
    callbacks.progress("3%  caf\xe9");
  };
  session().scan("/a");
  runWalks();
  dispatch().step(Queue::main);
  EXPECT_EQ(session().run().progress(), "3%  caf\xe9");
}

// Scanning, and the walk ended with something.

TEST_F(Scan, puts_its_tree_on_screen) {
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

TEST_F(Scan, replaces_the_whole_stack_of_the_old_tree) {
  scanTo(folder("/a", 9, {folder("/a/d", 9, {file("/a/d/f", 9)})}));
  session().open(session().navigation().current()->children().front());
  ASSERT_EQ(session().navigation().stack().size(), 2u);
  scanTo(treeOfA);
  EXPECT_EQ(stackPaths(), std::vector<std::string>{"/a"});
}

TEST_F(Scan, counts_its_tree_and_the_seconds_since_it_began) {
  walks().at(0).result =
      folder("/a", 900, {folder("/a/d", 800, {file("/a/d/f", 800)}), file("/a/x", 100)});
  session().scan("/a");
  now_ += std::chrono::milliseconds(2500);
  dispatch().drainAll();
  ASSERT_TRUE(session().result().scanStats());
  EXPECT_EQ(*session().result().scanStats(),
            (ScanStats{.nodes = 4, .files = 2, .folders = 2, .duration = 2.5, .bytes = 900}));
}

TEST_F(Scan, counts_its_seconds_from_its_own_beginning_after_one_that_was_overtaken) {
  session().scan("/b");
  now_ += std::chrono::seconds(10);
  walks().at(1).result = treeOfA;
  session().scan("/a");
  now_ += std::chrono::seconds(1);
  dispatch().drainAll();
  EXPECT_EQ(session().result().scanStats()->duration, 1);
}

TEST_F(Scan, takes_a_tree_of_no_size_with_children_and_one_of_some_size_without) {
  scanTo(folder("/a", 0, {folder("/a/empty", 0)}));
  EXPECT_EQ(stackPaths(), std::vector<std::string>{"/a"});
  scanTo(folder("/b", 10));
  EXPECT_EQ(stackPaths(), std::vector<std::string>{"/b"});
}

TEST_F(Scan, leaves_selection_and_focus_as_they_are) {
  session().selection().setFocused(file("/old", 1));
  session().shown().setMenuNode(file("/menu", 1));
  scanTo(treeOfA);
  EXPECT_EQ(session().selection().focused()->path(), "/old");
  EXPECT_EQ(session().shown().menuNode()->path(), "/menu");
}

// Scanning, and the walk read nothing.

TEST_F(Scan, that_reads_nothing_fails_when_there_is_no_tree) {
  session().scan("/locked");
  dispatch().drainAll();
  EXPECT_EQ(session().run().status(), ScanStatus::error);
  EXPECT_EQ(session().run().errorMessage(),
            "Nothing readable at /locked. Check its permissions or pick another folder.");
  EXPECT_TRUE(session().navigation().stack().empty());
  EXPECT_FALSE(session().result().scanStats());
  EXPECT_EQ(session().run().scanRoot(), "/locked");
}

TEST_F(Scan, that_reads_nothing_keeps_the_old_tree_without_complaint) {
  scanTo(treeOfA);
  session().scan("/locked");
  dispatch().drainAll();
  EXPECT_EQ(session().run().status(), ScanStatus::complete);
  EXPECT_EQ(session().run().errorMessage(), "");
  EXPECT_EQ(stackPaths(), std::vector<std::string>{"/a"});
}

// Cancel.

TEST_F(Scan, cancelled_for_the_first_time_leaves_an_idle_session_and_its_root) {
  session().scan("/a");
  session().run().cancel();
  EXPECT_EQ(session().run().status(), ScanStatus::idle);
  EXPECT_TRUE(session().navigation().stack().empty());
  EXPECT_EQ(session().run().scanRoot(), "/a");
  EXPECT_EQ(session().run().progress(), "");
  EXPECT_EQ(session().run().scanPercent(), 0);
}

TEST_F(Scan, cancelled_over_an_old_tree_leaves_that_tree) {
  scanTo(treeOfA);
  session().scan("/b");
  session().run().cancel();
  EXPECT_EQ(session().run().status(), ScanStatus::complete);
  EXPECT_EQ(session().run().scanPercent(), 0);
  EXPECT_EQ(stackPaths(), std::vector<std::string>{"/a"});
  EXPECT_EQ(session().run().scanRoot(), "/b");
}

TEST_F(Scan, cancelled_tells_its_walk_and_drops_what_it_brings) {
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

TEST_F(Scan, cancelled_after_its_walk_has_ended_drops_the_result_all_the_same) {
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

TEST_F(Scan, can_be_cancelled_when_none_runs) {
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

TEST_F(Scan, again_does_nothing_without_a_root) {
  session().rescan();
  EXPECT_EQ(session().run().status(), ScanStatus::idle);
  EXPECT_EQ(dispatch().waiting(Queue::userInitiated), 0u);
}

TEST_F(Scan, again_walks_the_root_of_the_latest_even_if_that_was_cancelled) {
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

TEST_F(Scan, again_of_the_same_root_keeps_its_name) {
  const std::string root = "/a folder whose name is too long to be kept inside of a string object";
  session().scan(root);
  session().rescan();
  EXPECT_EQ(session().run().scanRoot(), root);
  dispatch().drainAll();
  EXPECT_EQ(walks().at(1).root, root);
}

// One scan overtakes another.

TEST_F(Scan, of_another_folder_makes_all_of_the_first_void) {
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

TEST_F(Scan, that_was_overtaken_may_end_after_the_one_that_overtook_it) {
  // The first walk takes so long that all of the second fits into it.
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

TEST_F(Scan, that_follows_a_cancel_is_not_touched_by_the_cancelled_one) {
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

// The end of the session.

TEST_F(Scan, outlives_its_session_without_harm) {
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

TEST_F(Scan, may_end_its_walk_after_its_session_is_gone) {
  walks().at(0).result = treeOfA;
  session().scan("/a");
  runWalks();
  endSession();
  EXPECT_GT(dispatch().drain(Queue::main), 0u);
}

// What is scanned.

TEST_F(Scan, of_the_home_folder_takes_the_home_it_was_given) {
  session().scanHome();
  EXPECT_EQ(session().run().scanRoot(), "/home/user");
  dispatch().drainAll();
  EXPECT_EQ(walks().at(0).root, "/home/user");
}

TEST_F(Scan, of_a_chosen_folder_asks_for_one) {
  folderPanel_.answer = "/chosen\xff";
  session().chooseFolder();
  ASSERT_EQ(folderPanel_.requests.size(), 1u);
  EXPECT_EQ(folderPanel_.requests[0].prompt, "Scan");
  EXPECT_EQ(folderPanel_.requests[0].message, "Choose a folder to map.");
  EXPECT_EQ(session().run().status(), ScanStatus::scanning);
  dispatch().drainAll();
  EXPECT_EQ(walks().at(0).root, "/chosen\xff");
}

TEST_F(Scan, of_a_chosen_folder_does_nothing_when_the_user_backs_out) {
  session().chooseFolder();
  EXPECT_EQ(folderPanel_.requests.size(), 1u);
  EXPECT_EQ(session().run().status(), ScanStatus::idle);
  EXPECT_EQ(session().run().scanRoot(), "");
}

}  // namespace
}  // namespace tessaly
