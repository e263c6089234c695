// From the items marked to the archive and the Trash. Items are real files, since a session asks
// the disk whether they are still there; the Trash knows them by their paths. The folder that they
// lie in is the user's home, so that no place above it makes them critical.

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
#include "reclaim/ZipListing.h"
#include "session/SessionFixture_test.h"
#include "support/PlainFiles.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class ZipThenTrash : public testing::Test {
 protected:
  using Queue = Dispatch::Queue;
  using End = ZipEngine::Archived::End;

  ZipThenTrash() {
    for (const DiskNode& node : {film_, song_, note_}) plant(node);
    machine_.savePanel.answer = kept_.at("My things.zip");
    scan();
  }

  DiskNode item(const std::string& name, std::int64_t size) const {
    return file(disk_.at(name), size);
  }
  void plant(const DiskNode& node) {
    putFile(node.path(), std::string(node.name()));
    machine_.trash.put(node.path(), std::string(node.name()));
  }
  void vanish(const DiskNode& node) {
    fs::remove(node.path());
    machine_.trash.remove(node.path());
  }
  bool isOnDisk(const DiskNode& node) const { return machine_.trash.has(node.path()); }

  void scan() {
    session_->scan(disk_.path());
    machine_.dispatch.drainAll();
    ASSERT_EQ(session_->status(), ScanStatus::complete);
  }

  // Lets the archive be made, and then its result come home.
  void runArchive() { machine_.dispatch.step(Queue::userInitiated); }
  void bringHome() { machine_.dispatch.step(Queue::main); }
  void finish() {
    runArchive();
    bringHome();
  }

  ScanSession& session() { return *session_; }
  std::vector<std::string> queued() const {
    std::vector<std::string> paths;
    for (const DiskNode& node : session_->queue()) paths.push_back(node.path());
    return paths;
  }
  std::vector<std::string> lastTrashed() const {
    std::vector<std::string> paths;
    for (const TrashedItem& item : session_->lastTrashed()) paths.push_back(item.original);
    return paths;
  }
  void trashNote() {
    session_->setFocused(note_);
    session_->trashFocused();
    machine_.dispatch.drainAll();
  }

  // A panel in which time passes before the user has made up his mind.
  class SlowPanel : public SavePanel {
   public:
    std::optional<std::string> chooseFile(const Request& request) override {
      meanwhile();
      return answer.chooseFile(request);
    }
    std::function<void()> meanwhile = [] {};
    FakeSavePanel answer;
  };

  std::unique_ptr<ScanSession> makeSession(SavePanel& panel) {
    ScanSession::Services services = machine_.services(disk_.path());
    return std::make_unique<ScanSession>(ScanSession::Services{
        .dispatch = services.dispatch,
        .folderPanel = services.folderPanel,
        .savePanel = panel,
        .workspace = services.workspace,
        .pasteboard = services.pasteboard,
        .icon = services.icon,
        .notifications = services.notifications,
        .trash = services.trash,
        .prefs = services.prefs,
        .homeDirectory = services.homeDirectory,
        .supportDirectory = services.supportDirectory,
        .walk =
            [this](const std::string&, const DiskScanner::Callbacks&, const DiskScanner::Options&) {
              ++walks_;
              return tree_;
            },
        .archive =
            [this](const ZipEngine::Request& request) {
              archives_.push_back(request);
              return end_ == End::made ? made(request)
                                       : ZipEngine::Archived{.end = end_, .cause = cause_};
            },
        .run =
            [this](const std::string& path, const std::vector<std::string>& args) {
              if (path == "/usr/bin/osascript") return std::string("7\n");
              return noTools(path, args);
            },
        .volumeUsage = [] { return std::nullopt; },
        .date = [this] { return date_; }});
  }

  // What comes of an archive that is made of items as they are now.
  static ZipEngine::Archived made(const ZipEngine::Request& request) {
    putFile(request.to, "archive");
    ZipEngine::Archived archived{
        .end = End::made, .path = request.to, .identity = FileIdentity::of(request.to).value()};
    for (const std::string& path : request.paths) {
      const Result<FileIdentity> identity = FileIdentity::of(path);
      archived.originals.push_back({path, identity ? identity.value() : FileIdentity()});
    }
    return archived;
  }

  TempTree disk_;
  TempTree kept_;
  FakeMachine machine_;
  DiskNode film_ = item("film", 4);
  DiskNode song_ = item("song", 3);
  DiskNode note_ = item("note", 2);
  DiskNode tree_ = folder(disk_.path(), 9, {film_, song_, note_});
  std::deque<ZipEngine::Request> archives_;
  End end_ = End::made;
  std::string cause_;
  int walks_ = 0;
  std::chrono::system_clock::time_point date_{std::chrono::seconds(1767225599)};
  std::unique_ptr<ScanSession> session_ = makeSession(machine_.savePanel);
};

TEST_F(ZipThenTrash, archives_where_the_user_wants_it_and_then_moves) {
  session().zipThenTrash({film_, song_});
  EXPECT_EQ(session().toast(), "Zipping 2 items…");
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
  EXPECT_EQ(session().toast(), "Archived to My things.zip");
}

TEST_F(ZipThenTrash, says_one_item_of_one) {
  session().zipThenTrash({film_});
  EXPECT_EQ(session().toast(), "Zipping 1 item…");
}

TEST_F(ZipThenTrash, asks_for_a_zip_named_after_the_present_time) {
  session().zipThenTrash({film_});
  const std::string name = ZipEngine::suggestedName(date_);
  EXPECT_THAT(machine_.savePanel.requests,
              ElementsAre(SavePanel::Request{.fileName = name,
                                             .extension = "zip",
                                             .canCreateDirectories = true,
                                             .isForNewFile = true}));
}

TEST_F(ZipThenTrash, suggests_another_name_while_one_is_in_work) {
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

TEST_F(ZipThenTrash, works_on_the_queue_of_workers_that_the_user_waits_for) {
  session().zipThenTrash({film_});
  EXPECT_EQ(machine_.dispatch.waiting(Queue::userInitiated), 1U);
  EXPECT_EQ(machine_.dispatch.waiting(Queue::utility), 0U);
}

TEST_F(ZipThenTrash, warns_of_a_critical_item_and_does_nothing_with_any) {
  const DiskNode first = folder("/usr/lib", 1);
  session().addToQueue(film_);
  session().selectNodes({film_}, false);
  session().zipThenTrash({film_, first, folder("/etc", 1)});
  EXPECT_EQ(session().criticalWarning(), first);
  EXPECT_THAT(machine_.savePanel.requests, IsEmpty());
  EXPECT_EQ(machine_.dispatch.waiting(Queue::userInitiated), 0U);
  EXPECT_TRUE(isOnDisk(film_));
  EXPECT_THAT(queued(), ElementsAre(film_.path()));
  EXPECT_THAT(session().selectedNodes(), ElementsAre(film_));
}

TEST_F(ZipThenTrash, warns_of_a_critical_item_that_is_not_there) {
  const DiskNode gone = folder("/etc/there/is/none", 1);
  session().zipThenTrash({gone});
  EXPECT_EQ(session().criticalWarning(), gone);
}

TEST_F(ZipThenTrash, moves_only_the_critical_item_when_the_warning_is_overruled) {
  const DiskNode critical = folder("/usr/lib", 1);
  machine_.trash.put(critical.path());
  session().zipThenTrash({film_, critical});
  session().overruleWarning();
  machine_.dispatch.drainAll();
  EXPECT_FALSE(isOnDisk(critical));
  EXPECT_TRUE(isOnDisk(film_));
  EXPECT_THAT(archives_, IsEmpty());
}

TEST_F(ZipThenTrash, says_nothing_when_all_items_have_vanished) {
  const auto toast = session().toast();
  vanish(film_);
  session().zipThenTrash({film_});
  session().zipThenTrash({});
  EXPECT_THAT(machine_.savePanel.requests, IsEmpty());
  EXPECT_EQ(session().toast(), toast);
  EXPECT_EQ(session().criticalWarning(), std::nullopt);
}

TEST_F(ZipThenTrash, leaves_alone_what_has_vanished_before) {
  session().addToQueue(film_);
  session().addToQueue(song_);
  vanish(film_);
  session().zipThenTrash({film_, song_});
  EXPECT_EQ(session().toast(), "Zipping 1 item…");
  finish();
  EXPECT_THAT(archives_[0].paths, ElementsAre(song_.path()));
  EXPECT_THAT(queued(), ElementsAre(film_.path()));
  EXPECT_TRUE(session().queueOpen());
}

TEST_F(ZipThenTrash, does_nothing_when_the_user_backs_out) {
  const auto toast = session().toast();
  machine_.savePanel.answer.reset();
  session().addToQueue(film_);
  session().selectNodes({film_}, false);
  session().zipThenTrash({film_});
  machine_.dispatch.drainAll();
  EXPECT_THAT(archives_, IsEmpty());
  EXPECT_EQ(session().toast(), toast);
  EXPECT_THAT(queued(), ElementsAre(film_.path()));
  EXPECT_THAT(session().selectedNodes(), ElementsAre(film_));
  EXPECT_TRUE(isOnDisk(film_));
}

TEST_F(ZipThenTrash, keeps_everything_when_there_is_no_archive) {
  trashNote();
  session().addToQueue(film_);
  session().selectNodes({film_, song_}, false);
  end_ = End::notMade;
  cause_ = "the disk is full";
  const int walks = walks_;
  session().zipThenTrash({film_, song_});
  finish();
  EXPECT_EQ(session().toast(), "Could not create zip");
  EXPECT_EQ(session().failure(), "Could not create zip: the disk is full");
  EXPECT_TRUE(isOnDisk(film_));
  EXPECT_TRUE(isOnDisk(song_));
  EXPECT_THAT(queued(), ElementsAre(film_.path()));
  EXPECT_TRUE(session().queueOpen());
  EXPECT_THAT(session().selectedNodes(), ElementsAre(film_, song_));
  EXPECT_THAT(session().selected(), SizeIs(2));
  EXPECT_THAT(lastTrashed(), ElementsAre(note_.path()));
  machine_.dispatch.drainAll();
  EXPECT_EQ(walks_, walks);
}

TEST_F(ZipThenTrash, clears_the_selection_and_looks_again) {
  session().selectNodes({film_, note_}, false);
  const int walks = walks_;
  session().zipThenTrash({film_});
  runArchive();
  EXPECT_THAT(session().selected(), SizeIs(2));
  bringHome();
  EXPECT_THAT(session().selected(), IsEmpty());
  EXPECT_THAT(session().selectedNodes(), IsEmpty());
  EXPECT_EQ(session().status(), ScanStatus::scanning);
  EXPECT_EQ(session().scanRoot(), disk_.path());
  machine_.dispatch.drainAll();
  EXPECT_EQ(walks_, walks + 1);
}

TEST_F(ZipThenTrash, looks_at_the_disk_again_at_once) {
  auto services = machine_.services(disk_.path());
  services.archive = made;
  bool isCounted = false;
  services.run = [&](const std::string& path, const std::vector<std::string>& args) {
    if (path != "/usr/bin/osascript") return noTools(path, args);
    isCounted = true;
    return std::string("7\n");
  };
  ScanSession session(services);
  session.zipThenTrash({film_});
  isCounted = false;
  finish();
  EXPECT_TRUE(isCounted);
  EXPECT_EQ(session.trashCount(), 7);
}

TEST_F(ZipThenTrash, takes_what_was_archived_out_of_the_queue_and_leaves_the_rest) {
  for (const DiskNode& node : {film_, note_, song_}) session().addToQueue(node);
  session().zipThenTrash({song_, film_});
  finish();
  EXPECT_THAT(queued(), ElementsAre(note_.path()));
  EXPECT_TRUE(session().queueOpen());
}

TEST_F(ZipThenTrash, closes_the_queue_when_nothing_is_left_in_it) {
  session().addToQueue(film_);
  session().addToQueue(song_);
  session().zipThenTrash(session().queue());
  EXPECT_TRUE(session().queueOpen());
  finish();
  EXPECT_THAT(queued(), IsEmpty());
  EXPECT_FALSE(session().queueOpen());
}

TEST_F(ZipThenTrash, takes_out_of_the_queue_what_refuses_to_move) {
  machine_.trash.refuse(film_.path());
  session().addToQueue(film_);
  session().addToQueue(song_);
  session().zipThenTrash({film_, song_});
  finish();
  EXPECT_TRUE(isOnDisk(film_));
  EXPECT_FALSE(isOnDisk(song_));
  EXPECT_THAT(lastTrashed(), ElementsAre(song_.path()));
  EXPECT_THAT(queued(), IsEmpty());
  EXPECT_FALSE(session().queueOpen());
  EXPECT_EQ(session().toast(), "Archived to My things.zip");
}

TEST_F(ZipThenTrash, leaves_nothing_to_undo_when_nothing_moves) {
  trashNote();
  machine_.trash.refuse(film_.path());
  session().zipThenTrash({film_});
  finish();
  EXPECT_THAT(lastTrashed(), IsEmpty());
  EXPECT_EQ(session().toast(), "Archived to My things.zip");
}

// With the archive that is really made: an item that vanishes behind the panel may have been moved
// elsewhere by a second run, so that nobody knows what the archive would have to hold.
TEST_F(ZipThenTrash, moves_nothing_when_an_item_has_vanished_since_the_panel) {
  SlowPanel panel;
  panel.answer.answer = kept_.at("out.zip");
  panel.meanwhile = [this] { vanish(film_); };
  auto services = machine_.services(disk_.path());
  ScanSession session({.dispatch = services.dispatch,
                       .folderPanel = services.folderPanel,
                       .savePanel = panel,
                       .workspace = services.workspace,
                       .pasteboard = services.pasteboard,
                       .icon = services.icon,
                       .notifications = services.notifications,
                       .trash = services.trash,
                       .prefs = services.prefs,
                       .homeDirectory = services.homeDirectory,
                       .supportDirectory = services.supportDirectory,
                       .run = noTools});
  session.addToQueue(film_);
  session.zipThenTrash({film_, song_});
  EXPECT_EQ(session.toast(), "Zipping 2 items…");
  finish();
  EXPECT_EQ(session.toast(), "Archive would be incomplete; nothing was moved");
  EXPECT_TRUE(isOnDisk(song_));
  EXPECT_THAT(session.lastTrashed(), IsEmpty());
  EXPECT_THAT(session.queue(), ElementsAre(film_));
  EXPECT_THAT(entriesOf(kept_.path()), IsEmpty());
}

TEST_F(ZipThenTrash, says_what_would_be_missing_and_moves_nothing) {
  end_ = End::incomplete;
  cause_ = "film (cannot be read)";
  session().addToQueue(film_);
  session().zipThenTrash({film_, song_});
  finish();
  EXPECT_EQ(session().toast(), "Archive would be incomplete; nothing was moved");
  EXPECT_EQ(session().failure(), "Nothing was moved. Not to be archived: film (cannot be read)");
  EXPECT_TRUE(isOnDisk(film_));
  EXPECT_TRUE(isOnDisk(song_));
  EXPECT_THAT(lastTrashed(), IsEmpty());
  EXPECT_THAT(queued(), ElementsAre(film_.path()));
}

TEST_F(ZipThenTrash, moves_nothing_when_the_archive_is_another_or_gone_by_then) {
  for (const bool isGone : {true, false}) {
    session().zipThenTrash({film_});
    runArchive();
    fs::remove(kept_.at("My things.zip"));
    if (!isGone) putFile(kept_.at("My things.zip"), "another");
    bringHome();
    EXPECT_EQ(session().toast(), "Archive is gone or changed; nothing was moved");
    EXPECT_EQ(session().failure(),
              "Nothing was moved. The archive is gone or changed: My things.zip");
    EXPECT_TRUE(isOnDisk(film_));
    EXPECT_THAT(lastTrashed(), IsEmpty());
  }
}

TEST_F(ZipThenTrash, moves_no_item_that_another_has_taken_the_place_of_since) {
  session().addToQueue(film_);
  session().zipThenTrash({film_, song_});
  runArchive();
  putFile(disk_.at("newer"), "newer");
  fs::rename(disk_.at("newer"), film_.path());
  bringHome();
  EXPECT_TRUE(isOnDisk(film_));
  EXPECT_FALSE(isOnDisk(song_));
  EXPECT_THAT(lastTrashed(), ElementsAre(song_.path()));
  EXPECT_EQ(session().toast(), "Archived to My things.zip");
  EXPECT_EQ(session().failure(), "1 item changed after archiving and did not move: film");
  EXPECT_THAT(queued(), IsEmpty());
}

TEST_F(ZipThenTrash, moves_no_item_that_was_written_to_since) {
  session().zipThenTrash({film_, song_});
  runArchive();
  putFile(film_.path(), "more than it was");
  putFile(song_.path(), "and this");
  bringHome();
  EXPECT_THAT(lastTrashed(), IsEmpty());
  EXPECT_EQ(session().failure(),
            "2 items changed after archiving and did not move: film and 1 more");
}

TEST_F(ZipThenTrash, tells_the_name_that_the_archive_has_got) {
  auto services = machine_.services(disk_.path());
  services.archive = [&](ZipEngine::Request request) {
    request.to = kept_.at("My things 2.zip");
    return made(request);
  };
  ScanSession session(services);
  session.zipThenTrash({film_});
  finish();
  EXPECT_EQ(session.toast(), "Archived to My things 2.zip");
  EXPECT_FALSE(isOnDisk(film_));
}

TEST_F(ZipThenTrash, replaces_what_the_user_has_seen_behind_the_panel) {
  session().zipThenTrash({film_});
  putFile(kept_.at("My things.zip"), "old");
  session().zipThenTrash({song_});
  const FileIdentity seen = FileIdentity::of(kept_.at("My things.zip")).value();
  finish();
  finish();
  EXPECT_EQ(archives_.at(0).replaced, std::nullopt);
  EXPECT_EQ(archives_.at(1).replaced, seen);
}

TEST_F(ZipThenTrash, of_two_to_one_name_gives_two_archives_and_loses_nothing) {
  ScanSession session(machine_.services(disk_.path()));
  session.zipThenTrash({film_});
  session.zipThenTrash({song_});
  finish();
  EXPECT_EQ(session.toast(), "Archived to My things.zip");
  finish();
  EXPECT_EQ(session.toast(), "Archived to My things 2.zip");
  EXPECT_FALSE(isOnDisk(film_));
  EXPECT_FALSE(isOnDisk(song_));
  EXPECT_THAT(entriesOf(kept_.path()), ElementsAre("My things 2.zip", "My things.zip"));
  EXPECT_EQ(ZipListing::at(kept_.at("My things.zip"))->sizeOf("film"), 4);
  EXPECT_EQ(ZipListing::at(kept_.at("My things 2.zip"))->sizeOf("song"), 4);
}

TEST_F(ZipThenTrash, is_given_up_for_quitting) {
  session().zipThenTrash({film_});
  EXPECT_TRUE(session().isZipping());
  EXPECT_FALSE(archives_.size() > 0 && archives_[0].isGivenUp());
  end_ = End::givenUp;
  session().giveUpZips();
  const auto toast = session().toast();
  runArchive();
  EXPECT_TRUE(archives_.at(0).isGivenUp());
  EXPECT_FALSE(session().isZipping());
  bringHome();
  EXPECT_TRUE(isOnDisk(film_));
  EXPECT_EQ(session().toast(), toast);
  EXPECT_EQ(session().failure(), std::nullopt);
}

TEST_F(ZipThenTrash, is_given_up_when_the_session_ends) {
  session().zipThenTrash({film_});
  session_.reset();
  machine_.dispatch.drainAll();
  EXPECT_TRUE(archives_.at(0).isGivenUp());
}

TEST_F(ZipThenTrash, is_over_when_the_session_ends_behind_the_panel) {
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

TEST_F(ZipThenTrash, moves_nothing_once_the_session_is_gone) {
  session().zipThenTrash({film_});
  session_.reset();
  machine_.dispatch.drainAll();
  EXPECT_THAT(archives_, SizeIs(1));
  EXPECT_TRUE(isOnDisk(film_));
}

TEST_F(ZipThenTrash, moves_nothing_when_the_session_ends_before_the_archive_comes_home) {
  session().zipThenTrash({film_});
  runArchive();
  session_.reset();
  machine_.dispatch.drainAll();
  EXPECT_TRUE(isOnDisk(film_));
}

TEST_F(ZipThenTrash, survives_a_listener_that_ends_the_session) {
  session().zipThenTrash({film_});
  QObject::connect(session_.get(), &ScanSession::lastTrashedChanged, [this] { session_.reset(); });
  finish();
  EXPECT_EQ(session_, nullptr);
  EXPECT_FALSE(isOnDisk(film_));
}

TEST_F(ZipThenTrash, moves_only_what_was_marked_whatever_a_scan_finds_meanwhile) {
  session().selectNodes({film_, song_}, false);
  session().zipThenTrash(session().selectedNodes());
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

TEST_F(ZipThenTrash, moves_only_what_was_marked_whatever_is_selected_and_queued_meanwhile) {
  session().addToQueue(film_);
  session().zipThenTrash(session().queue());
  session().addToQueue(note_);
  session().selectNodes({song_}, false);
  finish();
  EXPECT_THAT(lastTrashed(), ElementsAre(film_.path()));
  EXPECT_THAT(queued(), ElementsAre(note_.path()));
  EXPECT_TRUE(isOnDisk(note_));
  EXPECT_TRUE(isOnDisk(song_));
}

TEST_F(ZipThenTrash, can_be_started_again_while_it_runs) {
  session().zipThenTrash({film_, song_});
  machine_.savePanel.answer = kept_.at("other.zip");
  session().zipThenTrash({song_, note_});
  EXPECT_EQ(machine_.dispatch.waiting(Queue::userInitiated), 2U);
  finish();
  EXPECT_EQ(session().toast(), "Archived to My things.zip");
  EXPECT_THAT(lastTrashed(), ElementsAre(film_.path(), song_.path()));
  finish();
  EXPECT_EQ(session().toast(), "Archived to other.zip");
  EXPECT_THAT(lastTrashed(), ElementsAre(note_.path()));
}

TEST_F(ZipThenTrash, shows_each_message_for_its_whole_time) {
  session().zipThenTrash({film_});
  machine_.dispatch.advance(std::chrono::seconds(2));
  finish();
  machine_.dispatch.advance(std::chrono::seconds(2));
  machine_.dispatch.drain(Queue::main);
  EXPECT_EQ(session().toast(), "Archived to My things.zip");
  machine_.dispatch.advance(std::chrono::seconds(1));
  machine_.dispatch.drain(Queue::main);
  EXPECT_EQ(session().toast(), std::nullopt);
}

TEST_F(ZipThenTrash, announces_all_of_it_once_everything_is_in_place) {
  session().addToQueue(film_);
  session().selectNodes({film_}, false);
  session().zipThenTrash({film_});
  runArchive();
  const QSignalSpy queue(&session(), &ScanSession::queueChanged);
  const QSignalSpy selection(&session(), &ScanSession::selectionChanged);
  bool isWhole = false;
  QObject::connect(&session(), &ScanSession::lastTrashedChanged, [&] {
    isWhole = session().queue().empty() && session().selected().empty() && !session().queueOpen() &&
              session().toast() == "Archived to My things.zip";
  });
  bringHome();
  EXPECT_TRUE(isWhole);
  EXPECT_EQ(queue.count(), 1);
  EXPECT_EQ(selection.count(), 1);
}

TEST_F(ZipThenTrash, makes_a_real_archive_where_no_other_way_is_given) {
  const TempTree kept;
  machine_.savePanel.answer = kept.at("out.zip");
  ScanSession session(machine_.services(disk_.path()));
  session.zipThenTrash({film_, song_});
  finish();
  EXPECT_TRUE(fs::exists(kept.at("out.zip")));
  EXPECT_EQ(session.toast(), "Archived to out.zip");
  session.undoTrash();
  EXPECT_EQ(machine_.trash.contentOf(film_.path()), "film");
  EXPECT_EQ(machine_.trash.contentOf(song_.path()), "song");
}

}  // namespace
}  // namespace tessaly
