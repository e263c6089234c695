// Selection, queue, Trash, excludes and filters.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include <QSignalSpy>

#include "session/SessionFixture_test.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::UnorderedElementsAre;

class Actions : public SessionFixture {
 protected:
  Actions() { scanTo(tree_); }

  static std::vector<std::string> paths(const std::vector<DiskNode>& nodes) {
    std::vector<std::string> all;
    all.reserve(nodes.size());
    for (const DiskNode& node : nodes) all.push_back(node.path());
    return all;
  }
  std::vector<std::string> selected() { return paths(session().selection().selectedNodes()); }
  std::vector<std::string> queued() { return paths(session().cleanupQueue().queue()); }

  // Puts the items of the tree on the disk of the fake Trash.
  void plant() {
    for (const DiskNode* node : {&film_, &song_, &note_, &below_}) {
      machine_.trash.put(node->path(), std::string(node->name()));
    }
  }

  DiskNode below_ = file("/data/big/below", 5);
  DiskNode big_ = folder("/data/big", 5, {below_});
  DiskNode film_ = file("/data/film", 4);
  DiskNode song_ = file("/data/song", 3);
  DiskNode note_ = file("/data/note", 2);
  DiskNode rest_ = file("/data/__rest__", 1);
  DiskNode tree_ = folder("/data", 15, {big_, film_, song_, note_, [] {
                                          DiskNode::Fields fields;
                                          fields.name = "+ 7 more";
                                          fields.path = "/data/__rest__";
                                          fields.size = 1;
                                          return DiskNode(fields);
                                        }()});
};

// Selection.

TEST_F(Actions, select_nodes_replaces_the_selection) {
  session().selection().selectNodes({film_, song_}, false);
  session().selection().selectNodes({note_}, false);
  EXPECT_THAT(selected(), ElementsAre("/data/note"));
  EXPECT_THAT(session().selection().selected(), UnorderedElementsAre("/data/note"));
  EXPECT_EQ(session().selection().focused(), note_);
}

TEST_F(Actions, select_nodes_appends_each_node_once) {
  session().selection().selectNodes({song_}, false);
  session().selection().selectNodes({film_, song_}, true);
  EXPECT_THAT(selected(), ElementsAre("/data/song", "/data/film"));
  EXPECT_EQ(session().selection().focused(), song_);
}

TEST_F(Actions, clear_selection_keeps_the_focus) {
  session().selection().selectNodes({film_, song_}, false);
  session().selection().clearSelection();
  EXPECT_THAT(selected(), IsEmpty());
  EXPECT_THAT(session().selection().selected(), IsEmpty());
  EXPECT_EQ(session().selection().focused(), song_);
}

TEST_F(Actions, selecting_no_nodes_clears_the_selection_and_keeps_the_focus) {
  session().selection().selectNodes({film_}, false);
  session().selection().selectNodes({}, false);
  EXPECT_THAT(selected(), IsEmpty());
  EXPECT_THAT(session().selection().selected(), IsEmpty());
  EXPECT_EQ(session().selection().focused(), film_);
}

TEST_F(Actions, a_selection_is_announced_once) {
  session().selection().selectNodes({film_}, false);
  const QSignalSpy changed(&session().selection(), &Selection::selectionChanged);
  session().selection().selectNodes({song_}, false);
  EXPECT_EQ(changed.count(), 1);
  session().selection().selectNodes({song_}, true);
  EXPECT_EQ(changed.count(), 1);
}

TEST_F(Actions, toggling_selects_or_deselects_a_node_and_focuses_it_both_times) {
  session().selection().toggleSelect(film_);
  session().selection().toggleSelect(song_);
  EXPECT_THAT(selected(), ElementsAre("/data/film", "/data/song"));
  session().selection().toggleSelect(film_);
  EXPECT_THAT(selected(), ElementsAre("/data/song"));
  EXPECT_THAT(session().selection().selected(), UnorderedElementsAre("/data/song"));
  EXPECT_EQ(session().selection().focused(), film_);
}

TEST_F(Actions, select_all_takes_the_children_except_remainders) {
  session().selectAllCurrent();
  EXPECT_THAT(selected(), ElementsAre("/data/big", "/data/film", "/data/song", "/data/note"));
  EXPECT_EQ(session().messages().toast(), "Selected 4");
}

TEST_F(Actions, select_all_in_an_empty_folder_shows_no_toast) {
  session().selection().selectNodes({film_}, false);
  scanTo(folder("/bare", 7));
  const auto toast = session().messages().toast();
  session().selectAllCurrent();
  EXPECT_THAT(selected(), IsEmpty());
  EXPECT_EQ(session().messages().toast(), toast);
}

TEST_F(Actions, copying_takes_the_selected_paths_one_per_line) {
  session().selection().selectNodes({song_, film_}, false);
  session().selection().copySelectedPaths();
  EXPECT_EQ(machine_.pasteboard.text, "/data/song\n/data/film");
  EXPECT_EQ(session().messages().toast(), "Copied 2 paths");
}

TEST_F(Actions, copying_takes_the_focus_without_a_selection) {
  session().selection().setFocused(note_);
  session().selection().copySelectedPaths();
  EXPECT_EQ(machine_.pasteboard.text, "/data/note");
  EXPECT_EQ(session().messages().toast(), "Copied 1 path");
}

TEST_F(Actions, copying_without_selection_and_focus_leaves_the_pasteboard_unchanged) {
  const auto toast = session().messages().toast();
  session().selection().copySelectedPaths();
  EXPECT_EQ(machine_.pasteboard.text, std::nullopt);
  EXPECT_EQ(session().messages().toast(), toast);
}

// Queue.

TEST_F(Actions, queueing_expands_the_panel) {
  session().cleanupQueue().setQueueMinimized(true);
  session().cleanupQueue().addToQueue(film_);
  EXPECT_THAT(queued(), ElementsAre("/data/film"));
  EXPECT_TRUE(session().cleanupQueue().queueOpen());
  EXPECT_FALSE(session().cleanupQueue().queueMinimized());
}

TEST_F(Actions, queueing_a_node_twice_does_not_open_the_panel_again) {
  session().cleanupQueue().addToQueue(film_);
  session().cleanupQueue().setQueueOpen(false);
  session().cleanupQueue().setQueueMinimized(true);
  session().cleanupQueue().addToQueue(file("/data/film", 99));
  EXPECT_THAT(queued(), ElementsAre("/data/film"));
  EXPECT_EQ(session().cleanupQueue().queue().front().size(), 4);
  EXPECT_FALSE(session().cleanupQueue().queueOpen());
  EXPECT_TRUE(session().cleanupQueue().queueMinimized());
}

TEST_F(Actions, queueing_the_selection_clears_it_and_shows_its_count) {
  session().cleanupQueue().addToQueue(film_);
  session().selection().selectNodes({film_, song_}, false);
  session().queueSelected();
  EXPECT_THAT(queued(), ElementsAre("/data/film", "/data/song"));
  EXPECT_THAT(selected(), IsEmpty());
  EXPECT_EQ(session().messages().toast(), "Queued 2 items");
  session().selection().selectNodes({note_}, false);
  session().queueSelected();
  EXPECT_EQ(session().messages().toast(), "Queued 1 item");
}

TEST_F(Actions, queueing_without_a_selection_does_nothing) {
  const auto toast = session().messages().toast();
  session().queueSelected();
  EXPECT_FALSE(session().cleanupQueue().queueOpen());
  EXPECT_EQ(session().messages().toast(), toast);
}

TEST_F(Actions, removing_the_last_node_from_the_queue_closes_the_panel) {
  session().cleanupQueue().addToQueue(film_);
  session().cleanupQueue().addToQueue(song_);
  session().cleanupQueue().removeFromQueue("/data/film");
  EXPECT_THAT(queued(), ElementsAre("/data/song"));
  EXPECT_TRUE(session().cleanupQueue().queueOpen());
  session().cleanupQueue().removeFromQueue("/nowhere");
  EXPECT_TRUE(session().cleanupQueue().queueOpen());
  session().cleanupQueue().removeFromQueue("/data/song");
  EXPECT_FALSE(session().cleanupQueue().queueOpen());
}

TEST_F(Actions, queueing_after_the_last_node_was_removed_opens_the_panel_again) {
  session().cleanupQueue().addToQueue(film_);
  session().cleanupQueue().removeFromQueue("/data/film");
  session().cleanupQueue().addToQueue(song_);
  EXPECT_TRUE(session().cleanupQueue().queueOpen());
  EXPECT_FALSE(session().cleanupQueue().queueMinimized());
  EXPECT_THAT(queued(), ElementsAre("/data/song"));
}

TEST_F(Actions, clearing_the_queue_removes_all_items_and_leaves_the_panel_collapsed) {
  plant();
  session().selection().setFocused(note_);
  session().trashFocused();
  dispatch_.drainAll();
  const auto undo = session().removal().lastTrashed();
  session().cleanupQueue().addToQueue(film_);
  session().cleanupQueue().addToQueue(song_);
  session().cleanupQueue().setQueueMinimized(true);
  session().cleanupQueue().clearQueue();
  EXPECT_THAT(queued(), IsEmpty());
  EXPECT_FALSE(session().cleanupQueue().queueOpen());
  EXPECT_TRUE(session().cleanupQueue().queueMinimized());
  EXPECT_TRUE(machine_.trash.has("/data/film"));
  EXPECT_TRUE(machine_.trash.has("/data/song"));
  EXPECT_EQ(session().removal().lastTrashed(), undo);
  EXPECT_EQ(session().run().status(), ScanStatus::complete);
  session().cleanupQueue().addToQueue(film_);
  EXPECT_TRUE(session().cleanupQueue().queueOpen());
  EXPECT_FALSE(session().cleanupQueue().queueMinimized());
}

TEST_F(Actions, emptying_the_queue_also_removes_items_that_have_vanished) {
  plant();
  for (const DiskNode& node : {film_, file("/data/gone", 1), note_})
    session().cleanupQueue().addToQueue(node);
  session().cleanupQueue().setQueueMinimized(true);
  session().emptyQueue();
  EXPECT_THAT(queued(), IsEmpty());
  EXPECT_FALSE(session().cleanupQueue().queueOpen());
  EXPECT_TRUE(session().cleanupQueue().queueMinimized());
  ASSERT_THAT(session().removal().lastTrashed(), SizeIs(2));
  EXPECT_EQ(session().removal().lastTrashed()[0].original, "/data/film");
  EXPECT_EQ(session().removal().lastTrashed()[1].original, "/data/note");
}

TEST_F(Actions, emptying_the_queue_does_not_warn_of_critical_paths) {
  machine_.trash.put("/home/user/Documents");
  machine_.trash.put("/home/user/.ssh");
  session().cleanupQueue().addToQueue(folder("/home/user/.ssh", 1));
  session().emptyQueue();
  EXPECT_EQ(session().removal().criticalWarning(), std::nullopt);
  EXPECT_FALSE(machine_.trash.has("/home/user/.ssh"));
}

TEST_F(Actions, emptying_the_queue_moves_all_items_and_rescans) {
  plant();
  machine_.trash.refuse("/data/song");
  for (const DiskNode& node : {film_, song_, note_}) session().cleanupQueue().addToQueue(node);
  trash_ = "2\n";
  session().emptyQueue();
  EXPECT_FALSE(machine_.trash.has("/data/film"));
  EXPECT_TRUE(machine_.trash.has("/data/song"));
  EXPECT_FALSE(machine_.trash.has("/data/note"));
  ASSERT_THAT(session().removal().lastTrashed(), SizeIs(2));
  EXPECT_EQ(session().removal().lastTrashed()[0].original, "/data/film");
  EXPECT_EQ(session().removal().lastTrashed()[1].original, "/data/note");
  EXPECT_THAT(queued(), IsEmpty());
  EXPECT_FALSE(session().cleanupQueue().queueOpen());
  EXPECT_EQ(session().run().status(), ScanStatus::scanning);
  EXPECT_EQ(session().machine().trashCount(), 2);
}

TEST_F(Actions, an_emptied_queue_without_moved_items_leaves_nothing_to_undo) {
  plant();
  session().selection().setFocused(film_);
  session().trashFocused();
  ASSERT_THAT(session().removal().lastTrashed(), SizeIs(1));
  session().cleanupQueue().addToQueue(file("/data/gone", 1));
  session().emptyQueue();
  EXPECT_THAT(session().removal().lastTrashed(), IsEmpty());
}

// Trash.

TEST_F(Actions, trashing_moves_the_focus_and_rescans) {
  plant();
  session().selection().setFocused(film_);
  session().trashFocused();
  EXPECT_FALSE(machine_.trash.has("/data/film"));
  ASSERT_THAT(session().removal().lastTrashed(), SizeIs(1));
  EXPECT_EQ(session().removal().lastTrashed().front().original, "/data/film");
  EXPECT_EQ(session().messages().toast(), "Moved film to Trash");
  EXPECT_EQ(session().run().status(), ScanStatus::scanning);
  EXPECT_EQ(session().run().scanRoot(), "/data");
}

TEST_F(Actions, trashing_without_a_focus_moves_the_node_on_screen) {
  plant();
  session().open(big_);
  session().trashFocused();
  EXPECT_FALSE(machine_.trash.has("/data/big"));
  EXPECT_EQ(session().messages().toast(), "Moved big to Trash");
}

TEST_F(Actions, another_item_is_trashed_with_a_record_like_the_focus) {
  plant();
  session().selection().setFocused(film_);
  session().trashRecording(song_);
  EXPECT_TRUE(machine_.trash.has("/data/film"));
  EXPECT_FALSE(machine_.trash.has("/data/song"));
  ASSERT_THAT(session().removal().lastTrashed(), SizeIs(1));
  EXPECT_EQ(session().removal().lastTrashed().front().original, "/data/song");
  EXPECT_EQ(session().messages().toast(), "Moved song to Trash");
  EXPECT_EQ(session().run().status(), ScanStatus::scanning);
}

TEST_F(Actions, trashing_without_a_tree_does_nothing) {
  restart();
  settings_.remove("marrow.lastScanRoot");
  const TempTree empty;
  ScanSession::Services services = machine_.services("/home/user");
  services.supportDirectory = empty.path();
  ScanSession bare(services);
  bare.trashFocused();
  EXPECT_EQ(bare.messages().toast(), std::nullopt);
  EXPECT_EQ(bare.removal().criticalWarning(), std::nullopt);
}

TEST_F(Actions, trashing_the_home_folder_warns_and_moves_nothing) {
  machine_.trash.put("/home/user/film");
  scanTo(folder("/home/user", 3, {file("/home/user/film", 3)}));
  session().trashFocused();
  ASSERT_TRUE(session().removal().criticalWarning().has_value());
  EXPECT_EQ(session().removal().criticalWarning()->path(), "/home/user");
  EXPECT_TRUE(machine_.trash.has("/home/user/film"));
  EXPECT_THAT(session().removal().lastTrashed(), IsEmpty());
  EXPECT_EQ(session().run().status(), ScanStatus::complete);
}

TEST_F(Actions, trash_of_one_node_keeps_no_record_and_rescans) {
  plant();
  session().selection().setFocused(song_);
  session().trashFocused();
  session().shown().setMenuNode(film_);
  session().trash(*session().shown().menuNode());
  EXPECT_FALSE(machine_.trash.has("/data/film"));
  EXPECT_EQ(session().shown().menuNode(), std::nullopt);
  ASSERT_THAT(session().removal().lastTrashed(), SizeIs(1));
  EXPECT_EQ(session().removal().lastTrashed().front().original, "/data/song");
  EXPECT_EQ(session().messages().toast(), "Moved song to Trash");
  EXPECT_EQ(session().run().status(), ScanStatus::scanning);
}

TEST_F(Actions, trash_of_a_critical_node_closes_its_menu_and_warns) {
  const DiskNode critical = folder("/usr/lib", 1);
  machine_.trash.put("/usr/lib");
  session().shown().setMenuNode(critical);
  session().trash(critical);
  EXPECT_EQ(session().shown().menuNode(), std::nullopt);
  EXPECT_EQ(session().removal().criticalWarning(), critical);
  EXPECT_TRUE(machine_.trash.has("/usr/lib"));
  EXPECT_EQ(session().run().status(), ScanStatus::complete);
}

TEST_F(Actions, a_dismissed_warning_changes_nothing_else) {
  machine_.trash.put("/usr/lib");
  session().removal().setCriticalWarning(folder("/usr/lib", 1));
  session().removal().dismissWarning();
  EXPECT_EQ(session().removal().criticalWarning(), std::nullopt);
  EXPECT_TRUE(machine_.trash.has("/usr/lib"));
  EXPECT_EQ(session().run().status(), ScanStatus::complete);
  session().overruleWarning();
  EXPECT_TRUE(machine_.trash.has("/usr/lib"));
  EXPECT_EQ(session().run().status(), ScanStatus::complete);
}

TEST_F(Actions, an_overruled_warning_moves_the_item_without_a_record_and_rescans) {
  machine_.trash.put("/usr/lib");
  session().removal().setCriticalWarning(folder("/usr/lib", 1));
  session().overruleWarning();
  EXPECT_EQ(session().removal().criticalWarning(), std::nullopt);
  EXPECT_FALSE(machine_.trash.has("/usr/lib"));
  EXPECT_THAT(session().removal().lastTrashed(), IsEmpty());
  EXPECT_EQ(session().run().status(), ScanStatus::scanning);
}

TEST_F(Actions, a_failed_move_shows_the_same_toast_and_keeps_the_undo) {
  plant();
  session().selection().setFocused(film_);
  session().trashFocused();
  machine_.trash.refuse("/data/song");
  session().selection().setFocused(song_);
  session().trashFocused();
  EXPECT_EQ(session().messages().toast(), "Moved song to Trash");
  ASSERT_THAT(session().removal().lastTrashed(), SizeIs(1));
  EXPECT_EQ(session().removal().lastTrashed().front().original, "/data/film");
}

TEST_F(Actions, undo_puts_back_the_items_of_the_queue) {
  plant();
  session().selection().setFocused(below_);
  session().trashFocused();
  session().cleanupQueue().addToQueue(film_);
  session().cleanupQueue().addToQueue(note_);
  session().emptyQueue();
  session().undoTrash();
  EXPECT_EQ(machine_.trash.contentOf("/data/film"), "film");
  EXPECT_EQ(machine_.trash.contentOf("/data/note"), "note");
  EXPECT_FALSE(machine_.trash.has("/data/big/below"));
  EXPECT_EQ(session().messages().toast(), "Put back 2 items");
  EXPECT_THAT(session().removal().lastTrashed(), IsEmpty());
  EXPECT_EQ(session().run().status(), ScanStatus::scanning);
}

TEST_F(Actions, undo_puts_a_folder_back_before_its_contents) {
  plant();
  session().cleanupQueue().addToQueue(below_);
  session().cleanupQueue().addToQueue(big_);
  session().emptyQueue();
  session().undoTrash();
  EXPECT_EQ(machine_.trash.contentOf("/data/big/below"), "below");
  EXPECT_EQ(session().messages().toast(), "Put back 2 items");
}

TEST_F(Actions, undo_counts_the_restored_items_and_forgets_the_others) {
  plant();
  session().cleanupQueue().addToQueue(film_);
  session().cleanupQueue().addToQueue(note_);
  session().emptyQueue();
  machine_.trash.put("/data/film", "another");
  session().undoTrash();
  EXPECT_EQ(session().messages().toast(), "Put back 1 item");
  EXPECT_EQ(machine_.trash.contentOf("/data/film"), "another");
  EXPECT_THAT(session().removal().lastTrashed(), IsEmpty());
}

TEST_F(Actions, undo_does_nothing_without_a_move) {
  const auto toast = session().messages().toast();
  session().undoTrash();
  EXPECT_EQ(session().messages().toast(), toast);
  EXPECT_EQ(session().run().status(), ScanStatus::complete);
}

// Excludes and filters.

TEST_F(Actions, excluding_a_folder_asks_for_it_and_stores_it) {
  folderPanel_.answer = "/data/big";
  session().choices().addExclude();
  ASSERT_FALSE(folderPanel_.requests.empty());
  EXPECT_EQ(folderPanel_.requests.back().prompt, "Exclude");
  EXPECT_EQ(folderPanel_.requests.back().message, "This folder will be skipped on the next scan.");
  EXPECT_THAT(session().choices().excludes(), ElementsAre("/data/big"));
  EXPECT_EQ(settings_.texts("marrow.excludes"), std::vector<std::string>{"/data/big"});
  EXPECT_EQ(session().messages().toast(), "Excluded big");
  EXPECT_EQ(session().run().status(), ScanStatus::complete);
  EXPECT_EQ(walks().ran(), 1u);
}

TEST_F(Actions, a_folder_is_excluded_once_and_a_cancelled_panel_excludes_nothing) {
  folderPanel_.answer = "/data/big";
  session().choices().addExclude();
  const QSignalSpy changed(&session().choices(), &Choices::excludesChanged);
  session().choices().addExclude();
  folderPanel_.answer.reset();
  session().choices().addExclude();
  EXPECT_THAT(session().choices().excludes(), ElementsAre("/data/big"));
  EXPECT_EQ(changed.count(), 0);
}

TEST_F(Actions, removing_a_folder_that_is_not_excluded_announces_nothing) {
  session().choices().setExcludes({"/a"});
  const QSignalSpy changed(&session().choices(), &Choices::excludesChanged);
  session().choices().removeExclude("/b");
  EXPECT_EQ(changed.count(), 0);
  EXPECT_THAT(session().choices().excludes(), ElementsAre("/a"));
}

TEST_F(Actions, removed_excludes_are_stored) {
  session().choices().setExcludes({"/a", "/b", "/a"});
  session().choices().removeExclude("/a");
  EXPECT_THAT(session().choices().excludes(), ElementsAre("/b"));
  EXPECT_EQ(settings_.texts("marrow.excludes"), std::vector<std::string>{"/b"});
}

TEST_F(Actions, switched_filters_are_stored) {
  const std::string id = session().choices().filters()[1].id;
  const QSignalSpy changed(&session().choices(), &Choices::filtersChanged);
  session().choices().toggleFilter(id);
  session().choices().toggleSkip(id);
  EXPECT_TRUE(session().choices().filters()[1].enabled);
  EXPECT_TRUE(session().choices().filters()[1].skipScan);
  session().choices().toggleFilter(id);
  EXPECT_FALSE(session().choices().filters()[1].enabled);
  EXPECT_EQ(changed.count(), 3);
  restart();
  EXPECT_FALSE(session().choices().filters()[1].enabled);
  EXPECT_TRUE(session().choices().filters()[1].skipScan);
}

TEST_F(Actions, an_unknown_filter_is_not_switched) {
  const auto before = session().choices().filters();
  session().choices().toggleFilter("nothing");
  EXPECT_EQ(session().choices().filters(), before);
  EXPECT_EQ(settings_.binary("marrow.filters"), std::nullopt);
}

// The desktop after a scan.

TEST_F(Actions, a_finished_scan_requests_attention_and_updates_the_badge) {
  volume_ = DiskUsage{.total = 1000, .used = 875, .free = 125, .usedPercent = 87.5};
  scanTo(tree_);
  EXPECT_EQ(machine_.icon.badges.back(), "88%");
  EXPECT_EQ(machine_.icon.attentionRequests, 2);
  EXPECT_THAT(machine_.notifications.posted, IsEmpty());
}

TEST_F(Actions, a_full_disk_is_notified_once) {
  volume_ = DiskUsage{.total = 1000, .used = 950, .free = 50, .usedPercent = 95};
  session().machine().refreshDisk();
  session().machine().refreshDisk();
  EXPECT_THAT(machine_.notifications.posted, SizeIs(1));
  EXPECT_EQ(machine_.icon.badges.back(), "95%");
}

TEST_F(Actions, a_folder_is_pinned_in_front_and_unpinned) {
  const QSignalSpy changes(&session().choices(), &Choices::pinsChanged);
  session().choices().togglePin("/a");
  session().choices().togglePin("/b\xff");
  EXPECT_THAT(session().choices().pins(), ElementsAre("/b\xff", "/a"));
  EXPECT_THAT(settings_.texts("marrow.pins").value(), ElementsAre("/b\xff", "/a"));
  session().choices().togglePin("/b\xff");
  EXPECT_THAT(session().choices().pins(), ElementsAre("/a"));
  EXPECT_EQ(changes.count(), 3);
}

TEST_F(Actions, the_trash_is_emptied_off_the_main_thread_and_counted_afterwards) {
  trash_ = "3";
  emptied_ = "0";
  session().machine().refreshDisk();
  std::vector<std::int64_t> countsAtTheEnd;
  session().emptyTrash([&] { countsAtTheEnd.push_back(session().machine().trashCount()); });
  EXPECT_EQ(emptyings_, 0);
  EXPECT_EQ(dispatch_.waiting(Queue::userInitiated), 1U);
  dispatch_.step(Queue::userInitiated);
  EXPECT_EQ(emptyings_, 1);
  EXPECT_THAT(countsAtTheEnd, IsEmpty());
  EXPECT_EQ(session().machine().trashCount(), 3);
  runMain();
  EXPECT_THAT(countsAtTheEnd, ElementsAre(3));
  EXPECT_EQ(session().machine().trashCount(), 0);
}

TEST_F(Actions, a_trash_that_cannot_be_emptied_shows_no_message) {
  trash_ = "3";
  session().machine().refreshDisk();
  const auto toast = session().messages().toast();
  bool hasEnded = false;
  session().emptyTrash([&] { hasEnded = true; });
  dispatch_.drainAll();
  EXPECT_EQ(emptyings_, 1);
  EXPECT_TRUE(hasEnded);
  EXPECT_EQ(session().machine().trashCount(), 3);
  EXPECT_EQ(session().messages().toast(), toast);
}

TEST_F(Actions, an_emptying_that_exceeds_its_wait_is_shown_as_going_on) {
  trash_ = "3";
  emptyingTakesLong_ = true;
  bool hasEnded = false;
  session().emptyTrash([&] { hasEnded = true; });
  dispatch_.step(Queue::userInitiated);
  trash_ = "2";
  runMain();
  EXPECT_TRUE(hasEnded);
  EXPECT_EQ(session().messages().toast(), "Emptying the Trash goes on in the background");
  EXPECT_EQ(session().machine().trashCount(), 2);
}

TEST_F(Actions, emptying_has_no_callback_after_the_session_has_ended) {
  emptied_ = "0";
  bool hasEnded = false;
  session().emptyTrash([&] { hasEnded = true; });
  dispatch_.step(Queue::userInitiated);
  endSession();
  runMain();
  EXPECT_FALSE(hasEnded);
}

}  // namespace
}  // namespace tessaly
