// From the selected items to the archive and the Trash.

#include <chrono>
#include <cstdlib>
#include <ctime>
#include <deque>
#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include <QSignalSpy>

#include "reclaim/ZipEngine.h"
#include "session/ZipFixture_test.h"
#include "support/PlainFiles.h"
#include "support/SessionRecord.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

TEST_F(ZipThenTrash, zip_archives_where_the_user_chose_and_then_moves) {
  session().zipThenTrash({film_, song_});
  EXPECT_EQ(session().messages().toast(), "Zipping 2 items…");
  EXPECT_THAT(archives_, IsEmpty());
  runArchive();
  ASSERT_THAT(archives_, SizeIs(1));
  EXPECT_THAT(archives_[0].paths, ElementsAre(film_.path(), song_.path()));
  EXPECT_EQ(archives_[0].to, kept_.at("My things.zip"));
  EXPECT_TRUE(isOnDisk(film_));
  bringHome();
  EXPECT_FALSE(isOnDisk(film_));
  EXPECT_FALSE(isOnDisk(song_));
  EXPECT_TRUE(isOnDisk(note_));
  EXPECT_THAT(lastTrashed(), ElementsAre(film_.path(), song_.path()));
  EXPECT_EQ(session().messages().toast(), "Archived to My things.zip");
}

TEST_F(ZipThenTrash, zip_of_one_item_says_1_item) {
  session().zipThenTrash({film_});
  EXPECT_EQ(session().messages().toast(), "Zipping 1 item…");
}

TEST_F(ZipThenTrash, zip_suggests_a_name_with_the_present_time) {
  session().zipThenTrash({film_});
  const std::string name = ZipEngine::suggestedName(date_);
  EXPECT_THAT(machine_.savePanel.requests,
              ElementsAre(SavePanel::Request{.fileName = name,
                                             .extension = "zip",
                                             .canCreateDirectories = true,
                                             .isForNewFile = true}));
}

TEST_F(ZipThenTrash, zip_suggests_another_name_while_one_is_in_work) {
  const std::string name = ZipEngine::suggestedName(date_);
  machine_.savePanel.answer = kept_.at(name);
  session().zipThenTrash({film_});
  session().zipThenTrash({song_});
  finish();
  finish();
  session().zipThenTrash({note_});
  ASSERT_THAT(machine_.savePanel.requests, SizeIs(3));
  EXPECT_EQ(machine_.savePanel.requests[1].fileName,
            name.substr(0, name.size() - std::string(".zip").size()) + " 2.zip");
  EXPECT_EQ(machine_.savePanel.requests[2].fileName, name);
}

TEST_F(ZipThenTrash, zip_notes_the_folder_of_the_archive_while_it_is_in_work) {
  std::vector<std::string> noted;
  duringArchive_ = [&] {
    for (const std::string& name : entriesOf(machine_.support.path()))
      if (name.starts_with(".tessaly-place-"))
        noted.push_back(contentOf(machine_.support.at(name)));
  };
  session().zipThenTrash({film_});
  finish();
  EXPECT_THAT(noted, ElementsAre(kept_.path()));
  for (const std::string& name : entriesOf(machine_.support.path()))
    EXPECT_FALSE(name.starts_with(".tessaly-")) << name;
}

TEST_F(ZipThenTrash, zip_works_on_the_user_initiated_queue) {
  session().zipThenTrash({film_});
  EXPECT_EQ(machine_.dispatch.waiting(Queue::userInitiated), 1U);
  EXPECT_EQ(machine_.dispatch.waiting(Queue::utility), 0U);
}

TEST_F(ZipThenTrash, zip_warns_of_a_critical_item_and_does_nothing) {
  const DiskNode first = folder("/usr/lib", 1);
  session().cleanupQueue().addToQueue(film_);
  session().selection().selectNodes({film_}, false);
  session().zipThenTrash({film_, first, folder("/etc", 1)});
  EXPECT_EQ(session().removal().criticalWarning(), first);
  EXPECT_THAT(machine_.savePanel.requests, IsEmpty());
  EXPECT_EQ(machine_.dispatch.waiting(Queue::userInitiated), 0U);
  EXPECT_TRUE(isOnDisk(film_));
  EXPECT_THAT(queued(), ElementsAre(film_.path()));
  EXPECT_THAT(session().selection().selectedNodes(), ElementsAre(film_));
}

TEST_F(ZipThenTrash, zip_warns_of_a_critical_item_that_does_not_exist) {
  const DiskNode gone = folder("/etc/there/is/none", 1);
  session().zipThenTrash({gone});
  EXPECT_EQ(session().removal().criticalWarning(), gone);
}

TEST_F(ZipThenTrash, only_the_critical_item_is_moved_if_the_warning_is_overruled) {
  const DiskNode critical = folder("/usr/lib", 1);
  machine_.trash.put(critical.path());
  session().zipThenTrash({film_, critical});
  session().overruleWarning();
  machine_.dispatch.drainAll();
  EXPECT_FALSE(isOnDisk(critical));
  EXPECT_TRUE(isOnDisk(film_));
  EXPECT_THAT(archives_, IsEmpty());
}

TEST_F(ZipThenTrash, zip_shows_no_message_if_all_items_have_vanished) {
  const auto toast = session().messages().toast();
  vanish(film_);
  session().zipThenTrash({film_});
  session().zipThenTrash({});
  EXPECT_THAT(machine_.savePanel.requests, IsEmpty());
  EXPECT_EQ(session().messages().toast(), toast);
  EXPECT_EQ(session().removal().criticalWarning(), std::nullopt);
}

TEST_F(ZipThenTrash, zip_ignores_items_that_have_vanished_before) {
  session().cleanupQueue().addToQueue(film_);
  session().cleanupQueue().addToQueue(song_);
  vanish(film_);
  session().zipThenTrash({film_, song_});
  EXPECT_EQ(session().messages().toast(), "Zipping 1 item…");
  finish();
  EXPECT_THAT(archives_[0].paths, ElementsAre(song_.path()));
  EXPECT_THAT(queued(), ElementsAre(film_.path()));
  EXPECT_TRUE(session().cleanupQueue().queueOpen());
}

TEST_F(ZipThenTrash, zip_does_nothing_if_the_panel_is_cancelled) {
  const auto toast = session().messages().toast();
  machine_.savePanel.answer.reset();
  session().cleanupQueue().addToQueue(film_);
  session().selection().selectNodes({film_}, false);
  session().zipThenTrash({film_});
  machine_.dispatch.drainAll();
  EXPECT_THAT(archives_, IsEmpty());
  EXPECT_EQ(session().messages().toast(), toast);
  EXPECT_THAT(queued(), ElementsAre(film_.path()));
  EXPECT_THAT(session().selection().selectedNodes(), ElementsAre(film_));
  EXPECT_TRUE(isOnDisk(film_));
}

TEST_F(ZipThenTrash, zip_keeps_everything_if_no_archive_was_made) {
  trashNote();
  session().cleanupQueue().addToQueue(film_);
  session().selection().selectNodes({film_, song_}, false);
  end_ = End::notMade;
  cause_ = "the disk is full";
  const int walks = walks_;
  session().zipThenTrash({film_, song_});
  finish();
  EXPECT_EQ(session().messages().toast(), "Could not create zip");
  EXPECT_EQ(session().messages().failure(), "Could not create zip: the disk is full");
  EXPECT_TRUE(isOnDisk(film_));
  EXPECT_TRUE(isOnDisk(song_));
  EXPECT_THAT(queued(), ElementsAre(film_.path()));
  EXPECT_TRUE(session().cleanupQueue().queueOpen());
  EXPECT_THAT(session().selection().selectedNodes(), ElementsAre(film_, song_));
  EXPECT_THAT(session().selection().selected(), SizeIs(2));
  EXPECT_THAT(lastTrashed(), ElementsAre(note_.path()));
  machine_.dispatch.drainAll();
  EXPECT_EQ(walks_, walks);
}

TEST_F(ZipThenTrash, zip_clears_the_selection_and_rescans) {
  session().selection().selectNodes({film_, note_}, false);
  const int walks = walks_;
  session().zipThenTrash({film_});
  runArchive();
  EXPECT_THAT(session().selection().selected(), SizeIs(2));
  bringHome();
  EXPECT_THAT(session().selection().selected(), IsEmpty());
  EXPECT_THAT(session().selection().selectedNodes(), IsEmpty());
  EXPECT_EQ(session().run().status(), ScanStatus::scanning);
  EXPECT_EQ(session().run().scanRoot(), disk_.path());
  machine_.dispatch.drainAll();
  EXPECT_EQ(walks_, walks + 1);
}

TEST_F(ZipThenTrash, zip_records_the_moved_items_and_keeps_the_focus) {
  using Names = SessionRecord::Names;
  session().cleanupQueue().addToQueue(film_);
  session().cleanupQueue().addToQueue(song_);
  session().cleanupQueue().setQueueMinimized(true);
  session().selection().selectNodes({film_}, false);
  session().selection().setFocused(note_);
  session().shown().setVizMode(VizMode::largest);
  session().shown().setPane(MainPane::apps);
  {
    const SessionRecord record(session(), machine_.settings);
    session().zipThenTrash({film_});
    runArchive();
    EXPECT_EQ(record.changed(), Names{"toast"});
  }
  const SessionRecord record(session(), machine_.settings);
  bringHome();
  EXPECT_EQ(record.changed(), (Names{"lastTrashed", "pane", "progress", "queue", "scanPercent",
                                     "selection", "status", "toast"}));
  EXPECT_EQ(record.announced(), record.changedFields());
}

TEST_F(ZipThenTrash, zip_updates_the_disk_usage_at_once) {
  auto services = machine_.services(disk_.path());
  services.archive = made;
  bool isCounted = false;
  services.run = [&](const std::string& path, const std::vector<std::string>& args, double) {
    if (path != "/usr/bin/osascript") return noTools(path, args);
    isCounted = true;
    return std::string("7\n");
  };
  ScanSession session(services);
  session.zipThenTrash({film_});
  isCounted = false;
  finish();
  EXPECT_TRUE(isCounted);
  EXPECT_EQ(session.machine().trashCount(), 7);
}

TEST_F(ZipThenTrash, zip_removes_the_archived_items_from_the_queue_and_no_others) {
  for (const DiskNode& node : {film_, note_, song_}) session().cleanupQueue().addToQueue(node);
  session().zipThenTrash({song_, film_});
  finish();
  EXPECT_THAT(queued(), ElementsAre(note_.path()));
  EXPECT_TRUE(session().cleanupQueue().queueOpen());
}

TEST_F(ZipThenTrash, zip_closes_the_queue_if_it_becomes_empty) {
  session().cleanupQueue().addToQueue(film_);
  session().cleanupQueue().addToQueue(song_);
  session().zipThenTrash(session().cleanupQueue().queue());
  EXPECT_TRUE(session().cleanupQueue().queueOpen());
  finish();
  EXPECT_THAT(queued(), IsEmpty());
  EXPECT_FALSE(session().cleanupQueue().queueOpen());
}

TEST_F(ZipThenTrash, zip_removes_items_from_the_queue_that_could_not_be_moved) {
  machine_.trash.refuse(film_.path());
  session().cleanupQueue().addToQueue(film_);
  session().cleanupQueue().addToQueue(song_);
  session().zipThenTrash({film_, song_});
  finish();
  EXPECT_TRUE(isOnDisk(film_));
  EXPECT_FALSE(isOnDisk(song_));
  EXPECT_THAT(lastTrashed(), ElementsAre(song_.path()));
  EXPECT_THAT(queued(), IsEmpty());
  EXPECT_FALSE(session().cleanupQueue().queueOpen());
  EXPECT_EQ(session().messages().toast(), "Archived to My things.zip");
}

TEST_F(ZipThenTrash, zip_leaves_nothing_to_undo_if_nothing_moved) {
  trashNote();
  machine_.trash.refuse(film_.path());
  session().zipThenTrash({film_});
  finish();
  EXPECT_THAT(lastTrashed(), IsEmpty());
  EXPECT_EQ(session().messages().toast(), "Archived to My things.zip");
}

TEST_F(ZipThenTrash, zip_stops_if_the_session_ends_during_the_panel) {
  SlowPanel panel;
  panel.answer.answer = kept_.at("out.zip");
  panel.meanwhile = [this] { session_.reset(); };
  session_ = makeSession(panel);
  machine_.dispatch.drainAll();
  session_->zipThenTrash({film_});
  EXPECT_EQ(session_, nullptr);
  machine_.dispatch.drainAll();
  EXPECT_THAT(archives_, IsEmpty());
  EXPECT_TRUE(isOnDisk(film_));
}

TEST_F(ZipThenTrash, zip_moves_nothing_after_the_session_is_gone) {
  session().zipThenTrash({film_});
  session_.reset();
  machine_.dispatch.drainAll();
  EXPECT_THAT(archives_, SizeIs(1));
  EXPECT_TRUE(isOnDisk(film_));
}

TEST_F(ZipThenTrash, zip_moves_nothing_if_the_session_ends_before_the_archive_is_taken) {
  session().zipThenTrash({film_});
  runArchive();
  session_.reset();
  machine_.dispatch.drainAll();
  EXPECT_TRUE(isOnDisk(film_));
}

TEST_F(ZipThenTrash, a_receiver_of_a_signal_of_a_zip_may_end_the_session) {
  session().zipThenTrash({film_});
  QObject::connect(&session_->removal(), &Removal::lastTrashedChanged,
                   [this] { session_.reset(); });
  finish();
  EXPECT_EQ(session_, nullptr);
  EXPECT_FALSE(isOnDisk(film_));
}

TEST_F(ZipThenTrash, zip_moves_only_its_items_whatever_a_scan_finds_meanwhile) {
  session().selection().selectNodes({film_, song_}, false);
  session().zipThenTrash(session().selection().selectedNodes());
  const DiskNode newcomer = item("newcomer", 100);
  plant(newcomer);
  tree_ = folder(disk_.path(), 105, {newcomer, song_, note_});
  session().rescan();
  machine_.dispatch.drainAll();
  EXPECT_THAT(archives_.at(0).paths, ElementsAre(film_.path(), song_.path()));
  EXPECT_THAT(lastTrashed(), ElementsAre(film_.path(), song_.path()));
  EXPECT_TRUE(isOnDisk(newcomer));
  EXPECT_TRUE(isOnDisk(note_));
}

TEST_F(ZipThenTrash, zip_moves_only_its_items_whatever_is_selected_and_queued_meanwhile) {
  session().cleanupQueue().addToQueue(film_);
  session().zipThenTrash(session().cleanupQueue().queue());
  session().cleanupQueue().addToQueue(note_);
  session().selection().selectNodes({song_}, false);
  finish();
  EXPECT_THAT(lastTrashed(), ElementsAre(film_.path()));
  EXPECT_THAT(queued(), ElementsAre(note_.path()));
  EXPECT_TRUE(isOnDisk(note_));
  EXPECT_TRUE(isOnDisk(song_));
}

TEST_F(ZipThenTrash, zip_can_be_started_again_while_it_runs) {
  session().zipThenTrash({film_, song_});
  machine_.savePanel.answer = kept_.at("other.zip");
  session().zipThenTrash({song_, note_});
  EXPECT_EQ(machine_.dispatch.waiting(Queue::userInitiated), 2U);
  finish();
  EXPECT_EQ(session().messages().toast(), "Archived to My things.zip");
  EXPECT_THAT(lastTrashed(), ElementsAre(film_.path(), song_.path()));
  finish();
  EXPECT_EQ(session().messages().toast(), "Archived to other.zip");
  EXPECT_THAT(lastTrashed(), ElementsAre(note_.path()));
}

TEST_F(ZipThenTrash, zip_shows_each_toast_for_its_full_time) {
  session().zipThenTrash({film_});
  machine_.dispatch.advance(std::chrono::seconds(2));
  finish();
  machine_.dispatch.advance(std::chrono::seconds(2));
  machine_.dispatch.drain(Queue::main);
  EXPECT_EQ(session().messages().toast(), "Archived to My things.zip");
  machine_.dispatch.advance(std::chrono::seconds(1));
  machine_.dispatch.drain(Queue::main);
  EXPECT_EQ(session().messages().toast(), std::nullopt);
}

TEST_F(ZipThenTrash, zip_announces_its_changes_once_all_are_made) {
  session().cleanupQueue().addToQueue(film_);
  session().selection().selectNodes({film_}, false);
  session().zipThenTrash({film_});
  runArchive();
  const QSignalSpy queue(&session().cleanupQueue(), &CleanupQueue::queueChanged);
  const QSignalSpy selection(&session().selection(), &Selection::selectionChanged);
  bool isWhole = false;
  QObject::connect(&session().removal(), &Removal::lastTrashedChanged, [&] {
    isWhole = session().cleanupQueue().queue().empty() &&
              session().selection().selected().empty() && !session().cleanupQueue().queueOpen() &&
              session().messages().toast() == "Archived to My things.zip";
  });
  bringHome();
  EXPECT_TRUE(isWhole);
  EXPECT_EQ(queue.count(), 1);
  EXPECT_EQ(selection.count(), 1);
}

TEST_F(ZipThenTrash, zip_makes_a_real_archive_by_default) {
  const TempTree kept;
  machine_.savePanel.answer = kept.at("out.zip");
  ScanSession session(machine_.services(disk_.path()));
  session.zipThenTrash({film_, song_});
  finish();
  EXPECT_TRUE(fs::exists(kept.at("out.zip")));
  EXPECT_EQ(session.messages().toast(), "Archived to out.zip");
  session.undoTrash();
  EXPECT_EQ(machine_.trash.contentOf(film_.path()), "film");
  EXPECT_EQ(machine_.trash.contentOf(song_.path()), "song");
}

}  // namespace
}  // namespace tessaly
