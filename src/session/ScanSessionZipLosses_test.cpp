// Items that stay where they are: if the archive would be incomplete, if it or an item has changed
// since, or if it was cancelled.
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "reclaim/ZipListing.h"
#include "session/ZipFixture_test.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

// With the real archiver: an item that vanishes while the panel is open may have been moved
// elsewhere by another process, so the archive could be incomplete.
TEST_F(ZipThenTrash, zip_moves_nothing_if_an_item_has_vanished_since_the_panel) {
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
  session.cleanupQueue().addToQueue(film_);
  session.zipThenTrash({film_, song_});
  EXPECT_EQ(session.messages().toast(), "Zipping 2 items…");
  finish();
  EXPECT_EQ(session.messages().toast(), "Archive would be incomplete; nothing was moved");
  EXPECT_TRUE(isOnDisk(song_));
  EXPECT_THAT(session.removal().lastTrashed(), IsEmpty());
  EXPECT_THAT(session.cleanupQueue().queue(), ElementsAre(film_));
  EXPECT_THAT(entriesOf(kept_.path()), IsEmpty());
}

TEST_F(ZipThenTrash, zip_shows_items_that_could_not_be_moved_beside_its_toast) {
  machine_.trash.refuse(film_.path());
  session().zipThenTrash({film_, song_});
  finish();
  EXPECT_EQ(session().messages().toast(), "Archived to My things.zip");
  EXPECT_EQ(session().messages().failure(),
            "“film” could not be moved to the Trash: not permitted");
  EXPECT_TRUE(isOnDisk(film_));
  EXPECT_FALSE(isOnDisk(song_));
}

TEST_F(ZipThenTrash, zip_moves_nothing_and_shows_what_an_archive_would_lack) {
  end_ = End::incomplete;
  cause_ = "film (cannot be read)";
  session().cleanupQueue().addToQueue(film_);
  session().zipThenTrash({film_, song_});
  finish();
  EXPECT_EQ(session().messages().toast(), "Archive would be incomplete; nothing was moved");
  EXPECT_EQ(session().messages().failure(),
            "Nothing was moved. Not to be archived: film (cannot be read)");
  EXPECT_TRUE(isOnDisk(film_));
  EXPECT_TRUE(isOnDisk(song_));
  EXPECT_THAT(lastTrashed(), IsEmpty());
  EXPECT_THAT(queued(), ElementsAre(film_.path()));
}

TEST_F(ZipThenTrash, zip_moves_nothing_if_the_archive_was_replaced_or_deleted) {
  for (const bool isGone : {true, false}) {
    session().zipThenTrash({film_});
    runArchive();
    fs::remove(kept_.at("My things.zip"));
    if (!isGone) putFile(kept_.at("My things.zip"), "another");
    bringHome();
    EXPECT_EQ(session().messages().toast(), "Archive is gone or changed; nothing was moved");
    EXPECT_EQ(session().messages().failure(),
              "Nothing was moved. The archive is gone or changed: My things.zip");
    EXPECT_TRUE(isOnDisk(film_));
    EXPECT_THAT(lastTrashed(), IsEmpty());
  }
}

TEST_F(ZipThenTrash, zip_moves_no_item_that_was_replaced_since) {
  session().cleanupQueue().addToQueue(film_);
  session().zipThenTrash({film_, song_});
  runArchive();
  putFile(disk_.at("newer"), "newer");
  fs::rename(disk_.at("newer"), film_.path());
  bringHome();
  EXPECT_TRUE(isOnDisk(film_));
  EXPECT_FALSE(isOnDisk(song_));
  EXPECT_THAT(lastTrashed(), ElementsAre(song_.path()));
  EXPECT_EQ(session().messages().toast(), "Archived to My things.zip");
  EXPECT_EQ(session().messages().failure(),
            "1 item changed after archiving and did not move: film");
  EXPECT_THAT(queued(), IsEmpty());
}

TEST_F(ZipThenTrash, zip_moves_no_item_that_was_written_to_since) {
  session().zipThenTrash({film_, song_});
  runArchive();
  putFile(film_.path(), "more than it was");
  putFile(song_.path(), "and this");
  bringHome();
  EXPECT_THAT(lastTrashed(), IsEmpty());
  EXPECT_EQ(session().messages().failure(),
            "2 items changed after archiving and did not move: film and 1 more");
}

TEST_F(ZipThenTrash, zip_shows_the_final_name_of_the_archive) {
  auto services = machine_.services(disk_.path());
  services.archive = [&](ZipEngine::Request request) {
    request.to = kept_.at("My things 2.zip");
    return made(request);
  };
  ScanSession session(services);
  session.zipThenTrash({film_});
  finish();
  EXPECT_EQ(session.messages().toast(), "Archived to My things 2.zip");
  EXPECT_FALSE(isOnDisk(film_));
}

TEST_F(ZipThenTrash, zip_replaces_the_file_that_the_user_agreed_to_replace) {
  session().zipThenTrash({film_});
  putFile(kept_.at("seen.zip"), "old");
  machine_.savePanel.answer = kept_.at("seen.zip");
  session().zipThenTrash({song_});
  const FileIdentity seen = FileIdentity::of(kept_.at("seen.zip")).value();
  finish();
  finish();
  EXPECT_EQ(archives_.at(0).replaced, std::nullopt);
  EXPECT_EQ(archives_.at(1).replaced, seen);
}

// The user may have agreed to replace an older file of that name.
TEST_F(ZipThenTrash, zip_does_not_replace_an_archive_finished_while_the_panel_was_open) {
  SlowPanel panel;
  session_ = makeSession(panel);
  machine_.dispatch.drainAll();
  fs::create_directory_symlink(kept_.path(), disk_.at("to the kept"));
  panel.answer.answer = kept_.at("out.zip");
  session().zipThenTrash({film_});
  panel.meanwhile = [this] { finish(); };
  panel.answer.answer = disk_.at("to the kept/out.zip");
  session().zipThenTrash({song_});
  ASSERT_FALSE(isOnDisk(film_));
  machine_.dispatch.drainAll();
  EXPECT_EQ(archives_.at(1).replaced, std::nullopt);
}

TEST_F(ZipThenTrash, two_zips_to_one_name_make_two_archives_and_lose_nothing) {
  ScanSession session(machine_.services(disk_.path()));
  session.zipThenTrash({film_});
  session.zipThenTrash({song_});
  finish();
  EXPECT_EQ(session.messages().toast(), "Archived to My things.zip");
  finish();
  EXPECT_EQ(session.messages().toast(), "Archived to My things 2.zip");
  EXPECT_FALSE(isOnDisk(film_));
  EXPECT_FALSE(isOnDisk(song_));
  EXPECT_THAT(entriesOf(kept_.path()), ElementsAre("My things 2.zip", "My things.zip"));
  EXPECT_EQ(ZipListing::at(kept_.at("My things.zip"))->sizeOf("film"), 4);
  EXPECT_EQ(ZipListing::at(kept_.at("My things 2.zip"))->sizeOf("song"), 4);
}

TEST_F(ZipThenTrash, quitting_cancels_a_zip) {
  session().zipThenTrash({film_});
  EXPECT_TRUE(session().removal().isZipping());
  end_ = End::givenUp;
  session().removal().giveUpZips();
  const auto toast = session().messages().toast();
  runArchive();
  EXPECT_TRUE(archives_.at(0).isGivenUp());
  EXPECT_FALSE(session().removal().isZipping());
  bringHome();
  EXPECT_TRUE(isOnDisk(film_));
  EXPECT_EQ(session().messages().toast(), toast);
  EXPECT_EQ(session().messages().failure(), std::nullopt);
}

TEST_F(ZipThenTrash, the_end_of_the_session_cancels_a_zip) {
  session().zipThenTrash({film_});
  session_.reset();
  machine_.dispatch.drainAll();
  EXPECT_TRUE(archives_.at(0).isGivenUp());
}

}  // namespace
}  // namespace tessaly
