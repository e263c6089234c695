// What the session shows when moving items to the Trash or back has failed.

#include <cerrno>
#include <chrono>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include <QObject>

#include "session/SessionFixture_test.h"

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

}  // namespace
}  // namespace tessaly
