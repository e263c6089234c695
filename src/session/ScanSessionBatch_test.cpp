// The batch that moves to the Trash on a worker, and what is not done while it moves or while the
// Trash is emptied. While a test has
// started a batch and not run the worker, the batch moves.

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "session/SessionFixture_test.h"
#include "session/ZipFixture_test.h"
#include "support/SessionRecord.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

using Progress = Removal::Progress;

TrashBatch::Item itemAt(const std::string& path) {
  return {.location = {.original = path, .place = path}};
}

class BatchToTheTrash : public SessionFixture {
 protected:
  BatchToTheTrash() {
    for (const char* path : {"/data/a", "/data/b", "/data/c", "/data/d"}) machine_.trash.put(path);
    trash_ = "5";
  }

  void start(const std::vector<std::string>& paths) {
    std::vector<TrashBatch::Item> items;
    for (const std::string& path : paths) items.push_back(itemAt(path));
    session().moveBatch(std::move(items),
                        [this](const TrashBatch::Moved& moved) { ended_ = moved; });
  }
  bool isOnDisk(const std::string& path) const { return machine_.trash.has(path); }
  std::vector<std::string> lastTrashed() {
    std::vector<std::string> paths;
    for (const TrashedItem& item : session().removal().lastTrashed())
      paths.push_back(item.original);
    return paths;
  }
  void trashD() {
    session().selection().setFocused(file("/data/d", 1));
    session().trashFocused();
    dispatch().drainAll();
  }

  std::optional<TrashBatch::Moved> ended_;
};

TEST_F(BatchToTheTrash, nothing_moves_on_the_main_thread) {
  start({"/data/a", "/data/b"});
  EXPECT_TRUE(session().removal().isMoving());
  EXPECT_TRUE(isOnDisk("/data/a"));
  runWalks();
  EXPECT_FALSE(isOnDisk("/data/a"));
  EXPECT_FALSE(ended_);
  runMain();
  EXPECT_FALSE(session().removal().isMoving());
  ASSERT_TRUE(ended_);
  EXPECT_EQ(ended_->items.size(), 2U);
}

TEST_F(BatchToTheTrash, the_moved_items_can_be_put_back) {
  trashD();
  start({"/data/a", "/data/b"});
  EXPECT_THAT(lastTrashed(), ElementsAre("/data/d"));
  dispatch().drainAll();
  EXPECT_THAT(lastTrashed(), ElementsAre("/data/a", "/data/b"));
  session().undoTrash();
  EXPECT_TRUE(isOnDisk("/data/a"));
  EXPECT_TRUE(isOnDisk("/data/b"));
  EXPECT_FALSE(isOnDisk("/data/d"));
}

TEST_F(BatchToTheTrash, a_folder_and_an_item_in_it_are_both_put_back) {
  machine_.trash.put("/data/.gradle");
  machine_.trash.put("/data/.gradle/caches", "of the build");
  start({"/data/.gradle", "/data/.gradle/caches"});
  dispatch().drainAll();
  ASSERT_FALSE(isOnDisk("/data/.gradle"));
  session().undoTrash();
  EXPECT_EQ(machine_.trash.contentOf("/data/.gradle/caches"), "of the build");
  EXPECT_EQ(session().messages().toast(), "Put back 2 items");
}

TEST_F(BatchToTheTrash, the_progress_counts_the_items_that_were_tried) {
  std::vector<Progress> seen;
  QObject::connect(&session().removal(), &Removal::progressChanged, &session().removal(), [&] {
    if (const auto& progress = session().removal().progress()) seen.push_back(*progress);
  });
  // As if the main thread drew a frame during each move.
  machine_.trash.beforeMoves([this](const std::string& path) {
    if (path == "/data/b") machine_.trash.refuse(path);
    runMain();
  });
  start({"/data/a", "/data/b", "/data/c"});
  runWalks();
  EXPECT_THAT(seen, ElementsAre(Progress{.done = 0, .all = 3}, Progress{.done = 1, .all = 3},
                                Progress{.done = 2, .all = 3}));
  runMain();
  EXPECT_EQ(seen.back().done, 3U);
  EXPECT_EQ(session().removal().progress(), std::nullopt);
}

TEST_F(BatchToTheTrash, many_moves_between_two_frames_are_one_update) {
  start({"/data/a", "/data/b", "/data/c"});
  runWalks();
  // The progress and the result.
  EXPECT_EQ(dispatch().waiting(Queue::main), 2U);
  runMain();
}

TEST_F(BatchToTheTrash, a_stop_lets_the_current_item_move_and_returns_the_rest) {
  machine_.trash.beforeMoves([this](const std::string& path) {
    if (path == "/data/b") session().removal().stopBatch();
  });
  start({"/data/a", "/data/b", "/data/c", "/data/d"});
  dispatch().drainAll();
  EXPECT_FALSE(isOnDisk("/data/b"));
  EXPECT_TRUE(isOnDisk("/data/c"));
  EXPECT_THAT(lastTrashed(), ElementsAre("/data/a", "/data/b"));
  ASSERT_TRUE(ended_);
  EXPECT_THAT(ended_->untried, ElementsAre("/data/c", "/data/d"));
}

TEST_F(BatchToTheTrash, a_stop_is_visible_until_the_batch_has_ended) {
  session().removal().stopBatch();
  start({"/data/a", "/data/b"});
  session().removal().stopBatch();
  EXPECT_EQ(session().removal().progress(), (Progress{.done = 0, .all = 2, .isStopping = true}));
  dispatch().drainAll();
  EXPECT_EQ(session().removal().progress(), std::nullopt);
}

TEST_F(BatchToTheTrash, a_batch_that_is_stopped_before_its_first_item_keeps_what_can_be_put_back) {
  trashD();
  start({"/data/a"});
  session().removal().stopBatch();
  dispatch().drainAll();
  EXPECT_TRUE(isOnDisk("/data/a"));
  EXPECT_THAT(lastTrashed(), ElementsAre("/data/d"));
}

TEST_F(BatchToTheTrash, a_batch_in_which_nothing_moved_leaves_nothing_to_put_back) {
  trashD();
  machine_.trash.refuse("/data/a");
  start({"/data/a"});
  dispatch().drainAll();
  EXPECT_THAT(lastTrashed(), IsEmpty());
}

TEST_F(BatchToTheTrash, failures_are_told_and_do_not_end_the_batch) {
  machine_.trash.refuse("/data/a");
  machine_.trash.remove("/data/b");
  start({"/data/a", "/data/b", "/data/c"});
  dispatch().drainAll();
  EXPECT_EQ(ended_->errors.size(), 2U);
  EXPECT_EQ(ended_->items.size(), 1U);
  ASSERT_EQ(session().messages().failures().size(), 1U);
  EXPECT_THAT(session().messages().failures()[0], testing::HasSubstr("not there any more"));
}

TEST_F(BatchToTheTrash, the_disk_usage_is_updated_and_no_rescan_starts) {
  scanTo(folder("/data", 4, {file("/data/a", 1)}));
  const std::size_t walks = this->walks().ran();
  start({"/data/a"});
  trash_ = "6";
  dispatch().drainAll();
  EXPECT_EQ(session().machine().trashCount(), 6);
  EXPECT_EQ(this->walks().ran(), walks);
}

TEST_F(BatchToTheTrash, only_the_batch_and_the_disk_usage_change) {
  const SessionRecord record(session(), settings_);
  start({"/data/a", "/data/b"});
  EXPECT_THAT(record.changed(), UnorderedElementsAre("moving", "moveProgress"));
  dispatch().drainAll();
  EXPECT_THAT(record.changed(), UnorderedElementsAre("lastTrashed", "trashCount"));
  EXPECT_THAT(record.announced(),
              UnorderedElementsAre("moving", "moveProgress", "lastTrashed", "trashCount"));
}

TEST_F(BatchToTheTrash, its_start_and_its_end_are_announced) {
  std::vector<bool> seen;
  QObject::connect(&session().removal(), &Removal::movingChanged, &session().removal(),
                   [&] { seen.push_back(session().removal().isMoving()); });
  start({"/data/a"});
  EXPECT_THAT(seen, ElementsAre(true));
  dispatch().drainAll();
  EXPECT_THAT(seen, ElementsAre(true, false));
}

TEST_F(BatchToTheTrash, a_second_batch_does_not_start_while_one_moves) {
  start({"/data/a"});
  session().moveBatch({itemAt("/data/b")}, [](const TrashBatch::Moved&) { FAIL(); });
  dispatch().drainAll();
  EXPECT_TRUE(isOnDisk("/data/b"));
  EXPECT_FALSE(isOnDisk("/data/a"));
}

TEST_F(BatchToTheTrash, a_second_batch_may_start_at_the_end_of_the_first) {
  session().moveBatch({itemAt("/data/a")},
                      [this](const TrashBatch::Moved&) { start({"/data/b"}); });
  dispatch().drainAll();
  EXPECT_FALSE(isOnDisk("/data/b"));
  EXPECT_THAT(lastTrashed(), ElementsAre("/data/b"));
}

TEST_F(BatchToTheTrash, the_session_may_be_destroyed_at_the_end_of_a_batch) {
  session().moveBatch({itemAt("/data/a")}, [this](const TrashBatch::Moved&) { endSession(); });
  dispatch().drainAll();
  EXPECT_FALSE(hasSession());
}

TEST_F(BatchToTheTrash, the_session_may_be_destroyed_by_a_view_that_sees_the_end) {
  start({"/data/a"});
  QObject::connect(&session().removal(), &Removal::lastTrashedChanged, &session(),
                   [this] { endSession(); });
  dispatch().drainAll();
  EXPECT_FALSE(hasSession());
  EXPECT_FALSE(ended_);
}

// Each route to the Trash, back, or to an empty Trash, while a batch moves.
class WhileABatchMoves : public BatchToTheTrash {
 protected:
  WhileABatchMoves() {
    trashD();
    session().machine().refreshDisk();
    dispatch().drainAll();
    start({"/data/a"});
    record_ = std::make_unique<SessionRecord>(session(), settings_);
  }

  // Expects that nothing has happened so far and nothing but the batch goes on.
  void expectOnlyTheBatch(SessionRecord::Names also = {}) {
    EXPECT_EQ(record_->changed(), also);
    dispatch().drainAll();
    EXPECT_TRUE(isOnDisk("/data/b"));
    EXPECT_FALSE(isOnDisk("/data/d"));
    EXPECT_THAT(lastTrashed(), ElementsAre("/data/a"));
    EXPECT_EQ(emptyings_, 0);
    also.insert({"lastTrashed", "moving", "moveProgress"});
    EXPECT_EQ(record_->changed(), also);
  }

  std::unique_ptr<SessionRecord> record_;
};

TEST_F(WhileABatchMoves, the_focused_item_is_not_moved) {
  session().selection().setFocused(file("/data/b", 1));
  session().trashFocused();
  expectOnlyTheBatch({"focused"});
}

TEST_F(WhileABatchMoves, a_critical_focused_item_raises_no_warning) {
  session().selection().setFocused(folder("/usr", 1));
  session().trashFocused();
  expectOnlyTheBatch({"focused"});
}

TEST_F(WhileABatchMoves, the_node_of_the_menu_is_not_moved_and_the_menu_closes) {
  session().shown().setMenuNode(file("/data/b", 1));
  session().trash(file("/data/b", 1));
  EXPECT_EQ(session().shown().menuNode(), std::nullopt);
  expectOnlyTheBatch();
}

TEST_F(WhileABatchMoves, the_item_of_the_warning_is_not_moved_and_the_warning_stays) {
  session().removal().setCriticalWarning(file("/data/b", 1));
  session().overruleWarning();
  EXPECT_TRUE(session().removal().criticalWarning());
  expectOnlyTheBatch({"criticalWarning"});
}

TEST_F(WhileABatchMoves, the_queue_is_not_moved_and_keeps_its_items) {
  session().cleanupQueue().addToQueue(file("/data/b", 1));
  session().emptyQueue();
  expectOnlyTheBatch({"queue", "queueOpen"});
}

TEST_F(WhileABatchMoves, the_last_move_is_not_put_back) {
  session().undoTrash();
  expectOnlyTheBatch();
}

TEST_F(WhileABatchMoves, the_trash_is_not_emptied) {
  bool hasEnded = false;
  session().emptyTrash([&] { hasEnded = true; });
  expectOnlyTheBatch();
  EXPECT_FALSE(hasEnded);
}

// What is moved while the Trash is emptied. The system lists what it deletes a while after the
// request: here when the worker runs.
class WhileTheTrashIsEmptied : public BatchToTheTrash {
 protected:
  WhileTheTrashIsEmptied() {
    trashD();
    emptied_ = "0";
    session().emptyTrash([this] { hasBeenEmptied_ = true; });
  }

  void expectRefusal(const std::string& path) {
    EXPECT_TRUE(isOnDisk(path));
    EXPECT_EQ(session().messages().toast(), "Wait until the Trash has been emptied");
    EXPECT_THAT(lastTrashed(), ElementsAre("/data/d"));
  }

  bool hasBeenEmptied_ = false;
};

TEST_F(WhileTheTrashIsEmptied, a_batch_waits) {
  start({"/data/a", "/data/b"});
  EXPECT_EQ(session().removal().progress(), (Progress{.done = 0, .all = 2}));
  EXPECT_EQ(dispatch().waiting(Queue::userInitiated), 1U);
  runWalks();
  EXPECT_TRUE(isOnDisk("/data/a"));
  dispatch().drainAll();
  EXPECT_TRUE(hasBeenEmptied_);
  EXPECT_EQ(emptyings_, 1);
  EXPECT_THAT(lastTrashed(), ElementsAre("/data/a", "/data/b"));
  EXPECT_FALSE(session().removal().isMoving());
}

TEST_F(WhileTheTrashIsEmptied, a_batch_moves_as_soon_as_emptying_only_goes_on_in_the_background) {
  emptyingTakesLong_ = true;
  start({"/data/a"});
  dispatch().drainAll();
  EXPECT_FALSE(isOnDisk("/data/a"));
}

TEST_F(WhileTheTrashIsEmptied, a_batch_waits_for_the_last_of_two_emptyings) {
  session().emptyTrash({});
  start({"/data/a"});
  dispatch().step(Queue::userInitiated);
  runMain();
  ASSERT_EQ(emptyings_, 1);
  EXPECT_EQ(dispatch().waiting(Queue::userInitiated), 1U);
  dispatch().drainAll();
  EXPECT_EQ(emptyings_, 2);
  EXPECT_FALSE(isOnDisk("/data/a"));
}

TEST_F(WhileTheTrashIsEmptied, a_batch_that_waits_can_be_stopped) {
  start({"/data/a", "/data/b"});
  session().removal().stopBatch();
  dispatch().drainAll();
  ASSERT_TRUE(ended_);
  EXPECT_THAT(ended_->untried, ElementsAre("/data/a", "/data/b"));
  EXPECT_TRUE(isOnDisk("/data/a"));
  EXPECT_FALSE(session().removal().isMoving());
  EXPECT_THAT(lastTrashed(), ElementsAre("/data/d"));
}

TEST_F(WhileTheTrashIsEmptied, a_batch_that_waits_moves_nothing_after_quitting) {
  start({"/data/a"});
  session().end();
  dispatch().drainAll();
  EXPECT_TRUE(isOnDisk("/data/a"));
  EXPECT_FALSE(ended_);
}

TEST_F(WhileTheTrashIsEmptied, the_trash_is_not_emptied_again_while_a_batch_waits) {
  start({"/data/a"});
  session().emptyTrash({});
  dispatch().drainAll();
  EXPECT_EQ(emptyings_, 1);
}

TEST_F(WhileTheTrashIsEmptied, the_focused_item_stays) {
  session().selection().setFocused(file("/data/b", 1));
  session().trashFocused();
  expectRefusal("/data/b");
  dispatch().drainAll();
  session().trashFocused();
  EXPECT_FALSE(isOnDisk("/data/b"));
}

TEST_F(WhileTheTrashIsEmptied, the_node_of_the_menu_stays_and_the_menu_closes) {
  session().shown().setMenuNode(file("/data/b", 1));
  session().trash(file("/data/b", 1));
  EXPECT_EQ(session().shown().menuNode(), std::nullopt);
  expectRefusal("/data/b");
}

TEST_F(WhileTheTrashIsEmptied, the_item_of_the_warning_stays_with_its_warning) {
  session().removal().setCriticalWarning(file("/data/b", 1));
  session().overruleWarning();
  EXPECT_TRUE(session().removal().criticalWarning());
  expectRefusal("/data/b");
}

TEST_F(WhileTheTrashIsEmptied, the_queue_keeps_its_items) {
  session().cleanupQueue().addToQueue(file("/data/b", 1));
  session().emptyQueue();
  EXPECT_EQ(session().cleanupQueue().queue().size(), 1U);
  expectRefusal("/data/b");
}

// What is still in the Trash comes back, and what is deleted is reported.
TEST_F(WhileTheTrashIsEmptied, the_last_move_can_be_put_back) {
  session().undoTrash();
  EXPECT_TRUE(isOnDisk("/data/d"));
}

TEST_F(ZipThenTrash, an_archive_that_ends_while_the_trash_is_emptied_waits_for_its_end) {
  session().zipThenTrash({film_});
  session().emptyTrash({});
  finish();
  EXPECT_TRUE(isOnDisk(film_));
  machine_.dispatch.drainAll();
  EXPECT_FALSE(isOnDisk(film_));
  EXPECT_EQ(lastTrashed(), std::vector{film_.path()});
}

// Quitting.

TEST_F(BatchToTheTrash, quitting_lets_the_current_item_move_and_publishes_nothing) {
  std::optional<SessionRecord> record;
  machine_.trash.beforeMoves([&](const std::string& path) {
    if (path != "/data/b") return;
    session().end();
    record.emplace(session(), settings_);
  });
  start({"/data/a", "/data/b", "/data/c"});
  dispatch().drainAll();
  EXPECT_FALSE(isOnDisk("/data/b"));
  EXPECT_TRUE(isOnDisk("/data/c"));
  EXPECT_FALSE(ended_);
  ASSERT_TRUE(record);
  EXPECT_THAT(record->announced(), IsEmpty());
}

TEST_F(BatchToTheTrash, a_batch_that_waits_for_a_worker_moves_nothing_after_quitting) {
  start({"/data/a"});
  session().end();
  dispatch().drainAll();
  EXPECT_TRUE(isOnDisk("/data/a"));
}

TEST_F(BatchToTheTrash, the_session_may_be_destroyed_during_a_batch) {
  machine_.trash.beforeMoves([this](const std::string& path) {
    if (path == "/data/a") endSession();
  });
  start({"/data/a", "/data/b"});
  dispatch().drainAll();
  EXPECT_FALSE(isOnDisk("/data/a"));
  EXPECT_TRUE(isOnDisk("/data/b"));
}

// An archive that was requested before the batch.
TEST_F(ZipThenTrash, an_archive_that_ends_while_a_batch_moves_waits_for_its_end) {
  session().zipThenTrash({film_});
  session().moveBatch({itemAt(song_.path())}, {});
  finish();
  EXPECT_TRUE(isOnDisk(film_));
  ASSERT_TRUE(session().removal().isMoving());
  machine_.dispatch.drainAll();
  EXPECT_FALSE(isOnDisk(song_));
  EXPECT_FALSE(isOnDisk(film_));
  EXPECT_EQ(lastTrashed(), std::vector{film_.path()});
}

TEST_F(ZipThenTrash, nothing_is_archived_while_a_batch_moves) {
  session().moveBatch({itemAt(song_.path())}, {});
  session().zipThenTrash({film_});
  EXPECT_THAT(machine_.savePanel.requests, IsEmpty());
  machine_.dispatch.drainAll();
  EXPECT_TRUE(archives_.empty());
  EXPECT_TRUE(isOnDisk(film_));
  EXPECT_FALSE(isOnDisk(song_));
}

TEST_F(ZipThenTrash, archives_that_end_while_a_batch_moves_are_taken_in_their_order) {
  session().zipThenTrash({film_});
  machine_.savePanel.answer = kept_.at("Other things.zip");
  session().zipThenTrash({note_});
  session().moveBatch({itemAt(song_.path())}, {});
  runArchive();
  runArchive();
  machine_.dispatch.drainAll();
  EXPECT_FALSE(isOnDisk(film_));
  EXPECT_EQ(lastTrashed(), std::vector{note_.path()});
}

TEST_F(ZipThenTrash, an_archive_waits_for_a_batch_that_starts_at_the_end_of_another) {
  session().zipThenTrash({film_});
  session().moveBatch({itemAt(song_.path())}, [this](const TrashBatch::Moved&) {
    session().moveBatch({itemAt(note_.path())}, {});
  });
  finish();
  machine_.dispatch.step(Queue::userInitiated);
  machine_.dispatch.drain(Queue::main);
  ASSERT_TRUE(session().removal().isMoving());
  EXPECT_TRUE(isOnDisk(film_));
  machine_.dispatch.drainAll();
  EXPECT_FALSE(isOnDisk(note_));
  EXPECT_EQ(lastTrashed(), std::vector{film_.path()});
}

TEST_F(ZipThenTrash, an_item_that_a_batch_moved_meanwhile_is_not_moved_by_its_archive) {
  session().zipThenTrash({film_, song_});
  session().moveBatch({itemAt(song_.path())}, [this](const TrashBatch::Moved&) { vanish(song_); });
  finish();
  machine_.dispatch.drainAll();
  EXPECT_EQ(lastTrashed(), std::vector{film_.path()});
  ASSERT_FALSE(session().messages().failures().empty());
  EXPECT_THAT(session().messages().failures().back(), testing::HasSubstr("song"));
}

}  // namespace
}  // namespace tessaly
