// What the session shows when moving items to the Trash or back has failed.

#include <cerrno>
#include <chrono>
#include <cstddef>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>
#include <vector>

#include <QObject>

#include "platform/FileIdentity.h"
#include "session/SessionFixture_test.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Failures : public SessionFixture {
 protected:
  Failures() {
    for (const DiskNode* node : {&film_, &song_, &note_})
      machine_.trash.put(node->path(), std::string(node->name()));
    scanTo(folder("/data", 9, {film_, song_, note_}));
  }

  void queue(const std::vector<DiskNode>& nodes) {
    for (const DiskNode& node : nodes) session().cleanupQueue().addToQueue(node);
  }
  // Other toasts are shown meanwhile, and time passes.
  void letTimePass() {
    for (int i = 0; i < 3; ++i) {
      session().messages().flash("Something else " + std::to_string(i));
      dispatch().advance(std::chrono::seconds(10));
      dispatch().drainAll();
    }
    ASSERT_EQ(session().messages().toast(), std::nullopt);
  }

  DiskNode film_ = file("/data/film", 4);
  DiskNode song_ = file("/data/song", 3);
  DiskNode note_ = file("/data/note", 2);
};

TEST_F(Failures, a_failed_move_of_the_focus_is_shown_beside_the_toast_and_stays) {
  machine_.trash.refuse(film_.path(), EXDEV);
  session().selection().setFocused(film_);
  session().trashFocused();
  EXPECT_EQ(session().messages().toast(), "Moved film to Trash");
  letTimePass();
  EXPECT_THAT(session().messages().failures(),
              ElementsAre("“film” could not be moved to the Trash: no Trash on this volume"));
}

TEST_F(Failures, a_failed_move_from_the_menu_is_shown) {
  machine_.trash.refuse(film_.path(), ENOSPC);
  session().shown().setMenuNode(film_);
  session().trash(*session().shown().menuNode());
  letTimePass();
  EXPECT_THAT(session().messages().failures(),
              ElementsAre("“film” could not be moved to the Trash: no space for one more file on "
                          "the disk"));
}

TEST_F(Failures, a_failed_move_that_overrules_the_warning_is_shown) {
  machine_.trash.put("/usr/lib");
  machine_.trash.refuse("/usr/lib", EROFS);
  session().removal().setCriticalWarning(folder("/usr/lib", 1));
  session().overruleWarning();
  letTimePass();
  EXPECT_THAT(session().messages().failures(),
              ElementsAre("“lib” could not be moved to the Trash: the volume is read-only"));
}

TEST_F(Failures, a_partly_failed_queue_shows_the_items_that_failed) {
  machine_.trash.refuse(film_.path(), EACCES);
  machine_.trash.remove(note_.path());
  queue({film_, song_, note_});
  session().emptyQueue();
  letTimePass();
  EXPECT_THAT(session().messages().failures(),
              ElementsAre("2 items could not be moved to the Trash: “film” (not permitted), "
                          "“note” (not there any more)"));
  EXPECT_FALSE(machine_.trash.has(song_.path()));
}

TEST_F(Failures, a_completely_failed_queue_is_shown_in_one_text) {
  for (const DiskNode* node : {&film_, &song_, &note_}) machine_.trash.refuse(node->path(), EDQUOT);
  queue({film_, song_, note_});
  session().emptyQueue();
  EXPECT_THAT(session().messages().failures(),
              ElementsAre("“film”, “song” and 1 more could not be moved to the Trash: the quota on "
                          "the disk is used up"));
}

TEST_F(Failures, a_failed_undo_is_shown_beside_the_toast_and_stays) {
  queue({film_, song_, note_});
  session().emptyQueue();
  machine_.trash.put(film_.path(), "another");
  machine_.trash.remove(session().removal().lastTrashed()[2].trashPath);
  session().undoTrash();
  EXPECT_EQ(session().messages().toast(), "Put back 1 item");
  letTimePass();
  EXPECT_THAT(session().messages().failures(),
              ElementsAre("2 items could not be put back: “note” (not found in the Trash), “film” "
                          "(something else stands at the old place)"));
  EXPECT_EQ(machine_.trash.contentOf(film_.path()), "another");
}

TEST_F(Failures, undo_shows_that_the_name_in_the_trash_belongs_to_another_item) {
  queue({film_});
  session().emptyQueue();
  machine_.trash.refuse(session().removal().lastTrashed()[0].trashPath, ESTALE);
  session().undoTrash();
  EXPECT_THAT(session().messages().failures(),
              ElementsAre("“film” could not be put back: another item has the name in the Trash "
                          "now"));
}

TEST_F(Failures, undo_shows_an_item_whose_location_in_the_trash_is_unknown) {
  machine_.trash.tellNoPlaces();
  queue({film_});
  session().emptyQueue();
  session().undoTrash();
  EXPECT_THAT(session().messages().failures(),
              ElementsAre("“film” could not be put back: not found in the Trash"));
}

TEST_F(Failures, successful_moves_show_no_failure) {
  session().selection().setFocused(film_);
  session().trashFocused();
  session().trash(song_);
  queue({note_});
  session().emptyQueue();
  session().undoTrash();
  EXPECT_THAT(session().messages().failures(), IsEmpty());
}

TEST_F(Failures, failures_stay_when_the_next_move_succeeds) {
  machine_.trash.refuse(film_.path());
  session().trash(film_);
  session().trash(song_);
  EXPECT_FALSE(machine_.trash.has(song_.path()));
  EXPECT_THAT(session().messages().failures(),
              ElementsAre("“film” could not be moved to the Trash: not permitted"));
}

TEST_F(Failures, failures_are_all_kept_when_the_next_move_fails_too) {
  machine_.trash.refuse(film_.path());
  machine_.trash.refuse(song_.path(), EBUSY);
  session().trash(film_);
  session().trash(song_);
  EXPECT_EQ(session().messages().failure(),
            "“song” could not be moved to the Trash: a volume is mounted there");
  session().messages().dismissFailure();
  EXPECT_EQ(session().messages().failure(),
            "“film” could not be moved to the Trash: not permitted");
}

TEST_F(Failures, failures_are_set_before_the_move_is_announced) {
  machine_.trash.refuse(film_.path());
  queue({film_, song_});
  std::size_t known = 0;
  QObject::connect(&session().cleanupQueue(), &CleanupQueue::queueChanged, &session(),
                   [&] { known = session().messages().failures().size(); });
  session().emptyQueue();
  EXPECT_EQ(known, 1U);
}

// A disk with three copies of a file, as an analysis has listed them.
class QueuedCopies : public SessionFixture {
 protected:
  QueuedCopies() {
    analysis_.duplicates = [](const PostScanAnalysis::FinishedScan& scan, const auto&) {
      DuplicateGroup group{.digest = "same", .bytes = 4096};
      for (const DiskNode& node : scan.tree.children()) {
        group.files.push_back(
            {.name = std::string(node.name()), .path = node.path(), .size = node.size()});
        scan.duplicates.compared(node.path(), FileIdentity::of(node.path()).value());
      }
      return std::vector{group};
    };
    restart();
    for (const DiskNode& node : copies_) machine_.trash.put(node.path());
    scanTo(folder(disk_.path(), 12288, copies_));
  }

  void change(std::size_t copy) const { std::ofstream(copies_[copy].path()) << "new"; }
  bool isInTrash(std::size_t copy) const { return !machine_.trash.has(copies_[copy].path()); }

  TempTree disk_{"a 4K\nb 4K\nc 4K\n"};
  std::vector<DiskNode> copies_ = {file(disk_.at("a"), 4096), file(disk_.at("b"), 4096),
                                   file(disk_.at("c"), 4096)};
};

TEST_F(QueuedCopies, a_copy_that_changed_since_it_was_listed_does_not_move_and_is_told) {
  for (const std::size_t copy : {0, 1}) session().cleanupQueue().addToQueue(copies_[copy]);
  change(0);
  session().emptyQueue();
  EXPECT_FALSE(isInTrash(0));
  EXPECT_TRUE(isInTrash(1));
  EXPECT_THAT(session().cleanupQueue().queue(), IsEmpty());
  EXPECT_THAT(session().removal().lastTrashed(),
              ElementsAre(testing::Field(&TrashedItem::original, copies_[1].path())));
  EXPECT_THAT(session().messages().failures(),
              ElementsAre("“a” could not be moved to the Trash: changed since it was listed"));
}

TEST_F(QueuedCopies, a_rescan_in_between_does_not_lose_the_guard) {
  session().cleanupQueue().addToQueue(copies_[0]);
  change(0);
  scanTo(folder(disk_.path(), 8192, {copies_[1], copies_[2]}));
  session().emptyQueue();
  EXPECT_FALSE(isInTrash(0));
}

TEST_F(QueuedCopies, a_copy_that_a_rescan_has_listed_again_moves) {
  session().cleanupQueue().addToQueue(copies_[0]);
  change(0);
  scanTo(folder(disk_.path(), 12288, copies_));
  session().emptyQueue();
  EXPECT_TRUE(isInTrash(0));
  EXPECT_THAT(session().messages().failures(), IsEmpty());
}

TEST_F(QueuedCopies, another_queued_item_moves_although_it_has_changed) {
  scanTo(folder(disk_.path(), 8192, {copies_[1], copies_[2]}));
  session().cleanupQueue().addToQueue(copies_[0]);
  change(0);
  session().emptyQueue();
  EXPECT_TRUE(isInTrash(0));
  EXPECT_THAT(session().messages().failures(), IsEmpty());
}

TEST_F(QueuedCopies, a_missing_copy_fails_like_any_other_item) {
  session().cleanupQueue().addToQueue(copies_[0]);
  ASSERT_EQ(::unlink(copies_[0].path().c_str()), 0);
  machine_.trash.remove(copies_[0].path());
  session().emptyQueue();
  EXPECT_THAT(session().messages().failures(),
              ElementsAre("“a” could not be moved to the Trash: not there any more"));
}

}  // namespace
}  // namespace tessaly
