// Items are archived, moved to the Trash and put back, with the system's zip and a real Trash.
#include <filesystem>
#include <gmock/gmock.h>
#include <map>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

#include <QTest>

#include "journeys/Journey.h"
#include "platform/Process.h"
#include "platform/linux/trash/UserTrashMover.h"
#include "support/PlainFiles.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::Pair;
using testing::SizeIs;

std::map<std::string, std::string> contentsOf(const std::string& top) {
  std::map<std::string, std::string> contents;
  for (const auto& entry : fs::recursive_directory_iterator(top)) {
    contents[entry.path().string().substr(top.size() + 1)] =
        entry.is_directory() ? "/" : contentOf(entry.path().string());
  }
  return contents;
}

// Used by the program of the journey, and so created before it.
struct Disk {
  TempTree state{"data/\nkept/\nout/\n"};
  UserTrashMover trash{{.homeTrash = state.at("data/Trash"),
                        .mountinfo = "/proc/self/mountinfo",
                        .user = geteuid()}};
};

class ZipJourney : protected Disk, public Journey {
 protected:
  ZipJourney()
      : Journey(
            "Movies/\n"
            "  beach.mp4 6M\n"
            "  cut/\n"
            "    end.mp4 1M\n"
            "-notes\\n 2M\n"
            "caf\\xE9.zip 2M\n",
            [this](Application::Services& services) { services.trash = &trash; }) {
    putFile(tree_.at("Movies/beach.mp4"), std::string(6 << 20, 'b'));
    putFile(tree_.at("-notes\n"), std::string(2 << 20, 'n'));
    machine_.savePanel.answer = archive();
    session().scanHome();
    finishScan();
  }

  std::string archive() const { return state.at("kept/out.zip"); }

  std::map<std::string, std::string> unpacked() const {
    Result<Process> unzip = Process::launch(
        {.path = "/usr/bin/unzip", .args = {"-qq", "-^", archive(), "-d", state.at("out")}});
    EXPECT_TRUE(unzip.ok());
    if (!unzip) return {};
    unzip.value().waitUntil(Deadline::never());
    EXPECT_EQ(unzip.value().exit(), (Process::Exit{.status = 0, .signal = 0}));
    return contentsOf(state.at("out"));
  }
};

TEST_F(ZipJourney, zip_keeps_a_copy_of_two_items_and_undo_restores_the_same_bytes) {
  const auto before = contentsOf(tree_.path());
  clickHolding(Qt::ShiftModifier, tilePoint("-notes\n"));
  clickHolding(Qt::ShiftModifier, tilePoint("Movies"));
  session().zipThenTrash(session().selection().selectedNodes());
  EXPECT_EQ(text("toast"), QStringLiteral("Zipping 2 items…"));
  dispatch_.drain(Dispatch::Queue::userInitiated);
  EXPECT_EQ(contentsOf(tree_.path()), before);
  dispatch_.step(Dispatch::Queue::main);
  EXPECT_EQ(text("toast"), QStringLiteral("Archived to out.zip"));
  finishScan();
  EXPECT_THAT(entriesOf(tree_.path()), ElementsAre("caf\xE9.zip"));
  EXPECT_THAT(session().navigation().current()->children(), SizeIs(1));

  auto archived = before;
  archived.erase("caf\xE9.zip");
  EXPECT_TRUE(unpacked() == archived);

  click("putBack");
  EXPECT_EQ(text("toast"), QStringLiteral("Put back 2 items"));
  EXPECT_TRUE(contentsOf(tree_.path()) == before);
  finishScan();
  EXPECT_THAT(session().navigation().current()->children(), SizeIs(3));
}

// After the scan every tile has moved, and there is a new one.
class ZipAfterRescan : public ZipJourney {
 protected:
  void scanOtherwise() {
    putFile(tree_.at("caf\xE9.zip"), std::string(20 << 20, 'z'));
    putFile(tree_.at("newcomer"), std::string(9 << 20, 'c'));
    putFile(tree_.at("-notes\n"), "little");
    session().rescan();
    finishScan();
    ASSERT_THAT(session().navigation().current()->children(), SizeIs(3));
    ASSERT_EQ(session().navigation().current()->children()[0].path(), tree_.at("caf\xE9.zip"));
  }
  void finishArchive() {
    dispatch_.drain(Dispatch::Queue::userInitiated);
    dispatch_.step(Dispatch::Queue::main);
    EXPECT_EQ(text("toast"), QStringLiteral("Archived to out.zip"));
    finishScan();
  }
};

TEST_F(ZipAfterRescan, zip_after_a_rescan_takes_only_the_items_selected_before) {
  clickHolding(Qt::ShiftModifier, tilePoint("-notes\n"));
  clickHolding(Qt::ShiftModifier, tilePoint("Movies"));
  scanOtherwise();
  EXPECT_EQ(text("zipSelection"), QStringLiteral("Zip (2)"));
  click("zipSelection");
  finishArchive();
  EXPECT_THAT(entriesOf(tree_.path()), ElementsAre("caf\xE9.zip", "newcomer"));
  EXPECT_THAT(entriesOf(state.at("kept")), ElementsAre("out.zip"));
  const auto archived = unpacked();
  EXPECT_EQ(archived.size(), 5U);
  EXPECT_EQ(archived.at("-notes\n"), "little");
  EXPECT_TRUE(archived.contains("Movies/cut/end.mp4"));
}

TEST_F(ZipAfterRescan, zip_after_a_rescan_takes_only_the_items_queued_before) {
  clickHolding(Qt::ControlModifier, tilePoint("-notes\n"));
  scanOtherwise();
  click("zipThenTrash");
  finishArchive();
  EXPECT_THAT(entriesOf(tree_.path()), ElementsAre("Movies", "caf\xE9.zip", "newcomer"));
  EXPECT_EQ(unpacked(), (std::map<std::string, std::string>{{"-notes\n", "little"}}));
  EXPECT_FALSE(shows("cleanupQueue"));
}

TEST_F(ZipAfterRescan, zip_after_a_rescan_takes_the_tile_whose_menu_was_open) {
  QTest::mouseClick(&window(), Qt::RightButton, Qt::NoModifier, tilePoint("-notes\n"));
  scanOtherwise();
  click("tileZip");
  EXPECT_EQ(text("toast"), QStringLiteral("Zipping 1 item…"));
  finishArchive();
  EXPECT_THAT(entriesOf(tree_.path()), ElementsAre("Movies", "caf\xE9.zip", "newcomer"));
  EXPECT_EQ(unpacked(), (std::map<std::string, std::string>{{"-notes\n", "little"}}));
}

TEST_F(ZipAfterRescan, zip_after_a_rescan_ignores_tiles_in_the_position_of_vanished_items) {
  clickHolding(Qt::ShiftModifier, tilePoint("-notes\n"));
  clickHolding(Qt::ShiftModifier, tilePoint("Movies"));
  fs::remove_all(tree_.at("Movies"));
  session().rescan();
  finishScan();
  ASSERT_THAT(session().navigation().current()->children(), SizeIs(2));
  click("zipSelection");
  EXPECT_EQ(text("toast"), QStringLiteral("Zipping 1 item…"));
  finishArchive();
  EXPECT_THAT(entriesOf(tree_.path()), ElementsAre("caf\xE9.zip"));
}

TEST_F(ZipJourney, zip_refuses_a_protected_location_and_everything_selected_with_it) {
  const auto before = contentsOf(tree_.path());
  clickHolding(Qt::ShiftModifier, tilePoint("-notes\n"));
  session().selection().selectNodes({*session().navigation().current()}, true);
  click("zipSelection");
  EXPECT_TRUE(shows("protectedLocation"));
  EXPECT_EQ(text("alertMessage"),
            QStringLiteral("Your home folder\n\n") + QString::fromStdString(tree_.path()));
  EXPECT_TRUE(machine_.savePanel.requests.empty());
  click("dismiss");
  EXPECT_EQ(dispatch_.waiting(Dispatch::Queue::userInitiated), 0U);
  EXPECT_TRUE(contentsOf(tree_.path()) == before);
  EXPECT_FALSE(fs::exists(archive()));
  EXPECT_THAT(session().selection().selectedNodes(), SizeIs(2));
}

TEST_F(ZipJourney, zip_moves_nothing_if_the_archive_cannot_be_written) {
  const auto before = contentsOf(tree_.path());
  machine_.savePanel.answer = state.at("nowhere/out.zip");
  clickHolding(Qt::ShiftModifier, tilePoint("Movies"));
  session().zipThenTrash(session().selection().selectedNodes());
  dispatch_.drain(Dispatch::Queue::userInitiated);
  dispatch_.step(Dispatch::Queue::main);
  EXPECT_EQ(text("toast"), QStringLiteral("Could not create zip"));
  EXPECT_TRUE(contentsOf(tree_.path()) == before);
  EXPECT_THAT(session().selection().selectedNodes(), SizeIs(1));
}

TEST_F(ZipJourney, zip_reports_an_incomplete_archive_and_moves_nothing) {
  tree_.plant("Movies/cut", "pipe fifo\n");
  putFile(archive(), "kept from before");
  clickHolding(Qt::ShiftModifier, tilePoint("-notes\n"));
  clickHolding(Qt::ShiftModifier, tilePoint("Movies"));
  click("zipSelection");
  dispatch_.drain(Dispatch::Queue::userInitiated);
  dispatch_.step(Dispatch::Queue::main);
  EXPECT_EQ(text("toast"), QStringLiteral("Archive would be incomplete; nothing was moved"));
  EXPECT_EQ(session().messages().failure(),
            "Nothing was moved. Not to be archived: Movies/cut/pipe (neither a file nor a folder)");
  EXPECT_THAT(entriesOf(tree_.path()), ElementsAre("-notes\n", "Movies", "caf\xE9.zip"));
  EXPECT_THAT(entriesOf(state.at("kept")), ElementsAre("out.zip"));
  EXPECT_EQ(contentOf(archive()), "kept from before");
  EXPECT_THAT(session().selection().selectedNodes(), SizeIs(2));

  fs::remove(tree_.at("Movies/cut/pipe"));
  click("zipSelection");
  dispatch_.drain(Dispatch::Queue::userInitiated);
  dispatch_.step(Dispatch::Queue::main);
  EXPECT_EQ(text("toast"), QStringLiteral("Archived to out.zip"));
  EXPECT_THAT(entriesOf(tree_.path()), ElementsAre("caf\xE9.zip"));
  EXPECT_EQ(unpacked().size(), 5U);
}

TEST_F(ZipJourney, two_zips_to_one_name_make_two_archives) {
  const DiskNode notes = session().navigation().current()->children()[1];
  ASSERT_EQ(notes.path(), tree_.at("-notes\n"));
  clickHolding(Qt::ShiftModifier, tilePoint("Movies"));
  session().zipThenTrash({notes});
  click("zipSelection");
  ASSERT_THAT(machine_.savePanel.requests, SizeIs(2));
  dispatch_.drain(Dispatch::Queue::userInitiated);
  dispatch_.step(Dispatch::Queue::main);
  EXPECT_EQ(text("toast"), QStringLiteral("Archived to out.zip"));
  EXPECT_THAT(entriesOf(tree_.path()), ElementsAre("Movies", "caf\xE9.zip"));
  dispatch_.step(Dispatch::Queue::main);
  EXPECT_EQ(text("toast"), QStringLiteral("Archived to out 2.zip"));
  EXPECT_THAT(entriesOf(tree_.path()), ElementsAre("caf\xE9.zip"));
  EXPECT_THAT(entriesOf(state.at("kept")), ElementsAre("out 2.zip", "out.zip"));
  EXPECT_THAT(unpacked(), ElementsAre(Pair("-notes\n", std::string(2 << 20, 'n'))));
}

}  // namespace
}  // namespace tessaly
