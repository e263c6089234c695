// Which fields each step of a session changes, compared over all its fields.

#include <cerrno>
#include <chrono>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

#include "session/SessionFixture_test.h"
#include "support/SessionRecord.h"

namespace tessaly {
namespace {

using Names = SessionRecord::Names;

constexpr std::int64_t MiB = 1048576;

// The fields that the start of a scan of the same root changes.
const Names aScanBegins = {"pane", "progress", "scanPercent", "status"};

Names operator+(Names some, const Names& others) {
  some.insert(others.begin(), others.end());
  return some;
}

class SideEffects : public SessionFixture {
 protected:
  SideEffects() {
    snapshot_ = [this](const std::string& path, const FolderWatch::IsCancelled&) {
      return FolderSnapshot{path, watched_};
    };
    restart();
    for (const DiskNode* node : {&film_, &song_, &note_, &gone_, &below_})
      machine_.trash.put(node->path());
    fillEveryField();
  }

  // Sets the tree of the next walk.
  void willFind(const DiskNode& tree) { walks().at(walks().ran()).result = tree; }

  void fillEveryField() {
    df_ =
        "Filesystem 1K-blocks Used Available Use% Mounted on\n"
        "/dev/sda1 100 60 40 60% /\n";
    volume_ = DiskUsage{.total = 100, .used = 50, .free = 50, .usedPercent = 50};
    trash_ = "1\n";
    willFind(folder("/data", 14 * MiB, {big_, film_, song_, app_, empty_}));
    session().scan("/data");
    dispatch().drainAll();

    session().selection().setFocused(gone_);
    willFind(tree_);
    walks().at(walks().ran()).during = [](const DiskScanner::Callbacks& callbacks) {
      if (callbacks.unreadable)
        callbacks.unreadable(SystemError::fromErrno(EACCES, "/data/locked"));
    };
    session().trashFocused();
    dispatch().drainAll();

    willFind(folder("/data", 5 * MiB, {file("/data/film", 5 * MiB)}));
    folderPanel_.answer = "/else";
    session().compareWithFolder();
    session().startWatch();
    dispatch().drainAll();
    watched_["/data"] += 2 * MiB;
    session().watch().pollWatch();
    dispatch().drainAll();

    folderPanel_.answer = "/data/left out";
    session().choices().addExclude();
    session().choices().togglePin("/data/big");
    session().choices().toggleFilter("docker");
    session().choices().toggleSkip("xcode");

    session().open(big_);
    session().selection().selectNodes({film_, song_}, false);
    session().selection().setFocused(note_);
    session().cleanupQueue().addToQueue(song_);
    session().cleanupQueue().addToQueue(note_);
    session().cleanupQueue().setQueueMinimized(true);
    session().shown().setSearchOpen(true);
    session().shown().setAiOpen(true);
    session().shown().setOcrOpen(true);
    session().shown().setHeatmap(true);
    session().shown().setVizMode(VizMode::largest);
    session().shown().setPane(MainPane::monitor);
    session().shown().setMenuNode(film_);
    session().removal().setCriticalWarning(folder("/usr/lib", 1));
    session().messages().tellFailure("Something did not move");
    session().messages().flash("Before");
    ASSERT_EQ(session().run().status(), ScanStatus::complete);
    ASSERT_EQ(session().run().progress(), "");
    ASSERT_FALSE(session().comparison().compareRows().empty());
    ASSERT_FALSE(session().watch().watchGrew().empty());
    ASSERT_FALSE(session().removal().lastTrashed().empty());
    ASSERT_FALSE(session().result().deltas().empty());
    ASSERT_FALSE(session().result().emptyFolders().empty());
    ASSERT_EQ(session().result().unreadable().count, 1U);
  }

  // Changes the machine, so that its figures differ from those of the session.
  void changeTheMachine() {
    df_ += "/dev/sdb1 200 50 150 25% /media/stick\n";
    volume_ = DiskUsage{.total = 100, .used = 60, .free = 40, .usedPercent = 60};
    trash_ = "2\n";
  }

  // The fields that `step` changes. Expects that exactly these are announced.
  template <class Step>
  Names changedBy(Step step) {
    const SessionRecord record(session(), settings_);
    step();
    EXPECT_EQ(record.announced(), record.changedFields());
    return record.changed();
  }

  std::vector<std::string> selectedPaths() {
    std::vector<std::string> paths;
    for (const DiskNode& node : session().selection().selectedNodes()) paths.push_back(node.path());
    return paths;
  }

  PathSizes watched_ = {{"/data", 1}};
  DiskNode below_ = file("/data/big/below", 5 * MiB);
  DiskNode deep_ = folder("/data/big/deep", MiB, {file("/data/big/deep/leaf", MiB)});
  DiskNode big_ = folder("/data/big", 6 * MiB, {below_, deep_});
  DiskNode film_ = file("/data/film", 4 * MiB);
  DiskNode song_ = file("/data/song", 3 * MiB);
  DiskNode note_ = file("/data/note", 2 * MiB);
  DiskNode gone_ = file("/data/gone", 2 * MiB);
  DiskNode app_ = folder("/data/Foo.app", MiB);
  DiskNode empty_ = folder("/data/empty", 0);
  DiskNode tree_ = folder("/data", 16 * MiB, {big_, film_, song_, note_, app_, empty_});
};

// Navigation.

TEST_F(SideEffects, going_back_changes_only_the_stack) {
  EXPECT_EQ(changedBy([&] { session().navigation().back(); }), Names{"stack"});
  EXPECT_EQ(changedBy([&] { session().navigation().back(); }), Names{});
}

TEST_F(SideEffects, a_jump_changes_only_the_stack) {
  EXPECT_EQ(changedBy([&] { session().navigation().jump(1); }), Names{});
  EXPECT_EQ(changedBy([&] { session().navigation().jump(2); }), Names{});
  EXPECT_EQ(changedBy([&] { session().navigation().jump(-1); }), Names{});
  EXPECT_EQ(changedBy([&] { session().navigation().jump(0); }), Names{"stack"});
}

TEST_F(SideEffects, opening_a_folder_clears_the_selection_and_changes_only_the_stack_besides) {
  EXPECT_EQ(changedBy([&] { session().open(deep_); }), (Names{"selection", "stack"}));
  EXPECT_TRUE(session().selection().selected().empty());
  EXPECT_TRUE(session().selection().selectedNodes().empty());
}

TEST_F(SideEffects, opening_a_node_that_cannot_be_entered_keeps_the_selection) {
  for (const DiskNode& node : {film_, empty_}) {
    EXPECT_EQ(changedBy([&] { session().open(node); }), Names{}) << node.path();
    EXPECT_EQ(dispatch().waiting(Queue::userInitiated), 0U);
  }
}

TEST_F(SideEffects, opening_a_package_clears_the_selection_once_its_contents_are_shown) {
  for (const bool byOpening : {true, false}) {
    session().selection().selectNodes({film_, song_}, false);
    session().selection().setFocused(note_);
    willFind(app_);
    session().messages().flash("Before");
    EXPECT_EQ(changedBy([&] { byOpening ? session().open(app_) : session().expandPackage(app_); }),
              Names{"toast"});
    EXPECT_EQ(session().selection().selectedNodes().size(), 2U);
    // Nodes selected during the walk are deselected too.
    session().selection().selectNodes({note_}, true);
    EXPECT_EQ(changedBy([&] { dispatch().drainAll(); }), (Names{"selection", "stack"}));
    EXPECT_TRUE(session().selection().selected().empty());
    EXPECT_TRUE(session().selection().selectedNodes().empty());
  }
}

TEST_F(SideEffects, showing_a_path_in_the_map_keeps_selection_and_queue) {
  EXPECT_EQ(changedBy([&] { session().focusPath("/data/film"); }),
            (Names{"focused", "pane", "stack", "vizMode"}));
  session().shown().setVizMode(VizMode::safe);
  session().shown().setPane(MainPane::apps);
  EXPECT_EQ(changedBy([&] { session().focusPath("/data"); }),
            (Names{"focused", "pane", "vizMode"}));
}

TEST_F(SideEffects, showing_a_path_that_the_tree_lacks_changes_nothing) {
  EXPECT_EQ(changedBy([&] { session().focusPath("/data/pruned"); }), Names{});
  EXPECT_EQ(changedBy([&] { session().navigation().reveal(film_); }), Names{});
  EXPECT_EQ(workspace_.revealed.size(), 2U);
}

// The selection.

TEST_F(SideEffects, selecting_changes_only_selection_and_focus) {
  EXPECT_EQ(changedBy([&] { session().selection().selectNodes({below_}, true); }),
            (Names{"focused", "selection"}));
  EXPECT_EQ(changedBy([&] {
              session().selection().selectNodes({film_, below_}, false);
            }),
            Names{"selection"});
  EXPECT_EQ(changedBy([&] { session().selection().selectNodes({film_}, true); }), Names{"focused"});
  EXPECT_EQ(changedBy([&] { session().selection().selectNodes({}, true); }), Names{});
  EXPECT_EQ(changedBy([&] { session().selection().selectNodes({}, false); }), Names{"selection"});
}

TEST_F(SideEffects, toggling_changes_only_selection_and_focus) {
  for (int i = 0; i < 2; ++i) {
    session().selection().setFocused(note_);
    EXPECT_EQ(changedBy([&] { session().selection().toggleSelect(below_); }),
              (Names{"focused", "selection"}));
    EXPECT_EQ(session().selection().focused(), below_);
  }
}

TEST_F(SideEffects, selecting_all_shows_a_toast) {
  EXPECT_EQ(changedBy([&] { session().selectAllCurrent(); }),
            (Names{"focused", "selection", "toast"}));
  EXPECT_EQ(selectedPaths(), (std::vector<std::string>{"/data/big/below", "/data/big/deep"}));
  EXPECT_EQ(session().selection().focused()->path(), "/data/big/deep");
}

TEST_F(SideEffects, clearing_the_selection_changes_nothing_else) {
  EXPECT_EQ(changedBy([&] { session().selection().clearSelection(); }), Names{"selection"});
}

TEST_F(SideEffects, copying_paths_keeps_the_selection) {
  EXPECT_EQ(changedBy([&] { session().selection().copySelectedPaths(); }), Names{"toast"});
  EXPECT_EQ(machine_.pasteboard.text, "/data/film\n/data/song");
}

// The queue.

TEST_F(SideEffects, queueing_keeps_selection_and_focus) {
  EXPECT_EQ(changedBy([&] { session().cleanupQueue().addToQueue(film_); }),
            (Names{"queue", "queueMinimized"}));
  session().cleanupQueue().setQueueOpen(false);
  session().cleanupQueue().setQueueMinimized(true);
  EXPECT_EQ(changedBy([&] { session().cleanupQueue().addToQueue(film_); }), Names{});
  EXPECT_EQ(changedBy([&] { session().cleanupQueue().addToQueue(below_); }),
            (Names{"queue", "queueMinimized", "queueOpen"}));
}

TEST_F(SideEffects, queueing_the_selection_clears_it_and_keeps_the_focus) {
  EXPECT_EQ(changedBy([&] { session().queueSelected(); }),
            (Names{"queue", "queueMinimized", "selection", "toast"}));
  EXPECT_TRUE(session().selection().selected().empty());
  EXPECT_EQ(changedBy([&] { session().queueSelected(); }), Names{});
}

TEST_F(SideEffects, queueing_a_selection_that_is_queued_already_clears_it_and_opens_nothing) {
  session().selection().selectNodes({song_, note_}, false);
  EXPECT_EQ(changedBy([&] { session().queueSelected(); }), (Names{"selection", "toast"}));
  EXPECT_EQ(session().messages().toast(), "Queued 2 items");
}

TEST_F(SideEffects, removing_from_the_queue_changes_nothing_else_until_it_is_empty) {
  EXPECT_EQ(changedBy([&] { session().cleanupQueue().removeFromQueue("/data/film"); }), Names{});
  EXPECT_EQ(changedBy([&] { session().cleanupQueue().removeFromQueue("/data/song"); }),
            Names{"queue"});
  EXPECT_EQ(changedBy([&] { session().cleanupQueue().removeFromQueue("/data/note"); }),
            (Names{"queue", "queueOpen"}));
}

TEST_F(SideEffects, clearing_the_queue_keeps_selection_focus_and_undo) {
  EXPECT_EQ(changedBy([&] { session().cleanupQueue().clearQueue(); }),
            (Names{"queue", "queueOpen"}));
}

TEST_F(SideEffects, emptying_the_queue_keeps_selection_and_focus_and_rescans) {
  changeTheMachine();
  EXPECT_EQ(changedBy([&] { session().emptyQueue(); }),
            aScanBegins + Names({"disk", "lastTrashed", "queue", "queueOpen", "trashCount"}));
}

// The Trash.

TEST_F(SideEffects, trashing_the_focus_keeps_selection_and_queue_and_rescans) {
  changeTheMachine();
  EXPECT_EQ(changedBy([&] { session().trashFocused(); }),
            aScanBegins + Names({"lastTrashed", "toast"}));
}

TEST_F(SideEffects, trashing_a_critical_focus_warns_and_changes_nothing_else) {
  session().selection().setFocused(folder("/home/user", 1));
  EXPECT_EQ(changedBy([&] { session().trashFocused(); }), Names{"criticalWarning"});
}

TEST_F(SideEffects, trashing_from_the_menu_closes_it_and_rescans) {
  EXPECT_EQ(changedBy([&] { session().trash(*session().shown().menuNode()); }),
            aScanBegins + Names({"menuNode"}));
  EXPECT_FALSE(machine_.trash.has("/data/film"));
}

TEST_F(SideEffects, trashing_a_critical_item_from_the_menu_warns_and_does_not_rescan) {
  EXPECT_EQ(changedBy([&] { session().trash(folder("/usr/bin", 1)); }),
            (Names{"criticalWarning", "menuNode"}));
}

TEST_F(SideEffects, answering_the_warning_removes_it) {
  machine_.trash.put("/usr/lib");
  EXPECT_EQ(changedBy([&] { session().removal().dismissWarning(); }), Names{"criticalWarning"});
  session().removal().setCriticalWarning(folder("/usr/lib", 1));
  EXPECT_EQ(changedBy([&] { session().overruleWarning(); }),
            aScanBegins + Names({"criticalWarning"}));
  EXPECT_FALSE(machine_.trash.has("/usr/lib"));
}

TEST_F(SideEffects, undo_keeps_selection_and_queue_and_rescans) {
  changeTheMachine();
  EXPECT_EQ(changedBy([&] { session().undoTrash(); }),
            aScanBegins + Names({"disk", "lastTrashed", "toast", "trashCount"}));
  EXPECT_TRUE(machine_.trash.has("/data/gone"));
  const std::size_t before = walks().ran();
  runWalks();
  ASSERT_EQ(walks().ran(), before + 1);
  EXPECT_EQ(walks().at(before).root, "/data");
}

TEST_F(SideEffects, undo_without_a_move_changes_nothing) {
  willFind(tree_);
  session().undoTrash();
  dispatch().drainAll();
  changeTheMachine();
  EXPECT_EQ(changedBy([&] { session().undoTrash(); }), Names{});
  EXPECT_EQ(dispatch().waiting(Queue::userInitiated), 0U);
}

// Scans.

TEST_F(SideEffects, the_start_of_a_scan_keeps_tree_selection_and_queue) {
  changeTheMachine();
  EXPECT_EQ(changedBy([&] { session().scan("/else"); }), aScanBegins + Names({"scanRoot"}));
}

TEST_F(SideEffects, the_end_of_a_scan_keeps_focus_selection_queue_and_menu) {
  session().scan("/else");
  session().shown().setPane(MainPane::apps);
  changeTheMachine();
  date_ += std::chrono::hours(1);
  willFind(folder("/else", 9 * MiB, {file("/else/x", 9 * MiB), folder("/else/bare", 0)}));
  EXPECT_EQ(changedBy([&] { dispatch().drainAll(); }),
            (Names{"deltas", "disk", "emptyFolders", "history", "largest", "progress", "recents",
                   "scanPercent", "scanStats", "stack", "status", "toast", "trashCount",
                   "unreadable", "volumes", "marrow.lastScanRoot", "marrow.recents"}));
  EXPECT_EQ(selectedPaths(), (std::vector<std::string>{"/data/film", "/data/song"}));
  EXPECT_EQ(session().cleanupQueue().queue(), (std::vector<DiskNode>{song_, note_}));
}

TEST_F(SideEffects, a_scan_that_reads_nothing_ends_and_changes_nothing_else) {
  session().scan("/else");
  changeTheMachine();
  willFind(folder("/else", 0));
  EXPECT_EQ(changedBy([&] { dispatch().drainAll(); }), Names{"status"});
}

TEST_F(SideEffects, cancelling_keeps_tree_selection_and_queue) {
  walks().at(walks().ran()).during = [](const DiskScanner::Callbacks& callbacks) {
    callbacks.progress("50%  x");
    callbacks.percent(0.5);
  };
  session().scan("/else");
  runWalks();
  dispatch().step(Queue::main);
  dispatch().step(Queue::main);
  EXPECT_EQ(changedBy([&] { session().run().cancel(); }),
            (Names{"progress", "scanPercent", "status"}));
  EXPECT_EQ(changedBy([&] { dispatch().drainAll(); }), Names{});
}

TEST_F(SideEffects, progress_changes_only_its_own_fields) {
  walks().at(walks().ran()).during = [](const DiskScanner::Callbacks& callbacks) {
    callbacks.progress("50%  x");
    callbacks.percent(0.5);
  };
  session().scan("/else");
  runWalks();
  EXPECT_EQ(changedBy([&] {
              dispatch().step(Queue::main);
              dispatch().step(Queue::main);
            }),
            (Names{"progress", "scanPercent"}));
}

// Comparing and watching.

TEST_F(SideEffects, comparing_shows_its_mode_and_later_its_rows) {
  folderPanel_.answer = "/third";
  willFind(folder("/third", MiB, {file("/third/film", MiB)}));
  EXPECT_EQ(changedBy([&] { session().compareWithFolder(); }),
            (Names{"compareNames", "comparing", "vizMode"}));
  EXPECT_EQ(changedBy([&] { dispatch().drainAll(); }), (Names{"compareRows", "comparing"}));
}

TEST_F(SideEffects, watching_changes_only_its_own_fields) {
  EXPECT_EQ(changedBy([&] { session().watch().stopWatch(); }),
            (Names{"watchGrew", "watchPath", "watching"}));
  EXPECT_EQ(changedBy([&] { session().startWatch(); }), (Names{"watchPath", "watching"}));
  EXPECT_EQ(changedBy([&] { dispatch().drainAll(); }), Names{"toast"});
  watched_["/data/big"] = 9 * MiB;
  session().watch().pollWatch();
  EXPECT_EQ(changedBy([&] { dispatch().drainAll(); }), (Names{"toast", "watchGrew"}));
}

// Choices.

TEST_F(SideEffects, each_choice_changes_only_its_own_field_and_setting) {
  EXPECT_EQ(changedBy([&] { session().choices().toggleFilter("xcode"); }),
            (Names{"filters", "marrow.filters"}));
  EXPECT_EQ(changedBy([&] { session().choices().toggleSkip("docker"); }),
            (Names{"filters", "marrow.filters"}));
  EXPECT_EQ(changedBy([&] { session().choices().toggleSkip("nothing"); }), Names{});
  EXPECT_EQ(changedBy([&] { session().choices().togglePin("/data/film"); }),
            (Names{"pins", "marrow.pins"}));
  EXPECT_EQ(changedBy([&] { session().choices().removeExclude("/data/left out"); }),
            (Names{"excludes", "marrow.excludes"}));
  folderPanel_.answer = "/data/big";
  EXPECT_EQ(changedBy([&] { session().choices().addExclude(); }),
            (Names{"excludes", "marrow.excludes", "toast"}));
  EXPECT_EQ(changedBy([&] { session().choices().addExclude(); }), Names{});
  folderPanel_.answer.reset();
  EXPECT_EQ(changedBy([&] { session().choices().addExclude(); }), Names{});
  EXPECT_EQ(changedBy([&] { session().chooseFolder(); }), Names{});
  EXPECT_EQ(changedBy([&] { session().compareWithFolder(); }), Names{});
  EXPECT_EQ(dispatch().waiting(Queue::userInitiated), 0U);
}

TEST_F(SideEffects, toggling_one_switch_of_a_filter_keeps_the_other) {
  const auto switches = [&](const std::string& id) {
    for (const BloatFilter& filter : session().choices().filters())
      if (filter.id == id) return std::pair(filter.enabled, filter.skipScan);
    return std::pair(false, false);
  };
  EXPECT_EQ(switches("docker"), std::pair(true, false));
  EXPECT_EQ(switches("xcode"), std::pair(false, true));
  int switched = 0;
  for (const BloatFilter& filter : session().choices().filters())
    switched += filter.enabled || filter.skipScan ? 1 : 0;
  EXPECT_EQ(switched, 2);
}

TEST_F(SideEffects, a_report_changes_nothing) {
  const TempTree place;
  machine_.savePanel.answer = place.at("report.json");
  EXPECT_EQ(changedBy([&] { session().exportJSON(); }), Names{});
}

TEST_F(SideEffects, updating_the_disk_usage_changes_only_its_figures) {
  changeTheMachine();
  EXPECT_EQ(changedBy([&] { session().machine().refreshDisk(); }), (Names{"disk", "trashCount"}));
}

TEST_F(SideEffects, messages_change_only_their_own_fields) {
  EXPECT_EQ(changedBy([&] { session().messages().flash("Hello"); }), Names{"toast"});
  dispatch().advance(std::chrono::milliseconds(2800));
  EXPECT_EQ(changedBy([&] { runMain(); }), Names{"toast"});
  EXPECT_EQ(changedBy([&] { session().messages().tellFailure("Another"); }), Names{"failures"});
  EXPECT_EQ(changedBy([&] { session().messages().dismissFailure(); }), Names{"failures"});
}

TEST_F(SideEffects, each_field_of_what_is_shown_changes_alone) {
  EXPECT_EQ(changedBy([&] { session().shown().setPane(MainPane::apps); }), Names{"pane"});
  EXPECT_EQ(changedBy([&] { session().shown().setVizMode(VizMode::history); }), Names{"vizMode"});
  EXPECT_EQ(changedBy([&] { session().shown().setHeatmap(false); }), Names{"heatmap"});
  EXPECT_EQ(changedBy([&] { session().shown().setSearchOpen(false); }), Names{"searchOpen"});
  EXPECT_EQ(changedBy([&] { session().shown().setSearchOpen(true); }), Names{"searchOpen"});
  EXPECT_EQ(changedBy([&] { session().shown().setAiOpen(false); }), Names{"aiOpen"});
  EXPECT_EQ(changedBy([&] { session().shown().setOcrOpen(false); }), Names{"ocrOpen"});
  EXPECT_EQ(changedBy([&] { session().cleanupQueue().setQueueOpen(false); }), Names{"queueOpen"});
  EXPECT_EQ(changedBy([&] { session().cleanupQueue().setQueueMinimized(false); }),
            Names{"queueMinimized"});
  EXPECT_EQ(changedBy([&] { session().selection().setFocused(std::nullopt); }), Names{"focused"});
  EXPECT_EQ(changedBy([&] { session().shown().setMenuNode(std::nullopt); }), Names{"menuNode"});
  EXPECT_EQ(changedBy([&] { session().removal().setCriticalWarning(std::nullopt); }),
            Names{"criticalWarning"});
}

// The next run of the program.

TEST_F(SideEffects, the_next_run_restores_choices_and_tree_but_no_selection_queue_or_undo) {
  const auto recents = session().choices().recents();
  const auto pins = session().choices().pins();
  const auto excludes = session().choices().excludes();
  const auto filters = session().choices().filters();
  const auto history = session().result().history();
  restart();
  EXPECT_EQ(session().choices().recents(), recents);
  EXPECT_EQ(session().choices().pins(), pins);
  EXPECT_EQ(session().choices().excludes(), excludes);
  EXPECT_EQ(session().choices().filters(), filters);
  EXPECT_EQ(session().result().history(), history);
  EXPECT_EQ(stackPaths(), std::vector<std::string>{"/data"});
  EXPECT_EQ(session().shown().pane(), MainPane::map);
  EXPECT_EQ(session().shown().vizMode(), VizMode::treemap);
  EXPECT_TRUE(session().selection().selected().empty());
  EXPECT_TRUE(session().cleanupQueue().queue().empty());
  EXPECT_FALSE(session().cleanupQueue().queueOpen());
  EXPECT_FALSE(session().selection().focused());
  EXPECT_TRUE(session().removal().lastTrashed().empty());
  EXPECT_FALSE(session().shown().heatmap());
  EXPECT_FALSE(session().watch().watching());
  EXPECT_TRUE(session().comparison().compareRows().empty());
  EXPECT_TRUE(session().messages().failures().empty());
  EXPECT_EQ(session().result().unreadable(), UnreadableItems());
}

}  // namespace
}  // namespace tessaly
