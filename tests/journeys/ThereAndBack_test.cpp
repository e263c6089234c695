// The complete workflow on a real disk: items are scanned, marked, moved to the Trash, put back,
// and found by the next run of the program.
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include "journeys/Journey.h"
#include "platform/linux/trash/UserTrashMover.h"
#include "scan/DiskScanner.h"
#include "session/SettingsFile.h"
#include "support/TreeDifference.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;

// Everything in a folder by path: kind and permissions, time, and content or target.
std::map<std::string, std::string> photographOf(const std::string& top) {
  std::map<std::string, std::string> items;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(top)) {
    struct stat status {};
    EXPECT_EQ(lstat(entry.path().c_str(), &status), 0) << entry.path();
    std::string facts = std::to_string(status.st_mode);
    if (entry.is_symlink()) {
      facts += " -> " + fs::read_symlink(entry.path()).string();
    } else if (entry.is_regular_file()) {
      std::string content(static_cast<std::size_t>(status.st_size), '\0');
      std::ifstream file(entry.path(), std::ios::binary);
      EXPECT_TRUE(file.read(content.data(), status.st_size)) << entry.path();
      facts += " " + std::to_string(status.st_mtim.tv_sec) + "." +
               std::to_string(status.st_mtim.tv_nsec) + " " + content;
    }
    items.emplace(entry.path().string().substr(top.size()), facts);
  }
  return items;
}

// The program's own files on this disk, beside the user's.
struct Keeping {
  TempTree state{"data/\nsettings/\n"};
  UserTrashMover trash{{.homeTrash = state.at("data/Trash"),
                        .mountinfo = "/proc/self/mountinfo",
                        .user = geteuid()}};
  std::unique_ptr<SettingsFile> settings;
  int walks = 0;

  Journey::Lend lend() {
    return [this](Application::Services& services) {
      settings = std::make_unique<SettingsFile>(state.at("settings/settings.json"));
      services.settings = settings.get();
      services.trash = &trash;
      services.walk = [this](const std::string& root, const DiskScanner::Callbacks& callbacks,
                             const DiskScanner::Options& options) {
        ++walks;
        return DiskScanner::scan(root, callbacks, options);
      };
    };
  }
};

class ThereAndBack : private Keeping, public Journey {
 protected:
  ThereAndBack()
      : Journey(
            "Movies/\n"
            "  old/ mode=0750\n"
            "    beach.mp4 6M mtime=1500000000.5\n"
            "    best -> beach.mp4\n"
            "Code/\n"
            "  main.cpp 3M mode=0600\n"
            "notes.txt 2M mtime=1400000000.25\n"
            "caf\\xE9\\n.zip 2M\n"
            "stays.iso 4M\n",
            lend()) {}

  std::string trashFiles() const { return state.at("data/Trash/files"); }
  std::string trashInfos() const { return state.at("data/Trash/info"); }
  int walksSoFar() const { return walks; }
};

std::ptrdiff_t itemsIn(const std::string& folder) {
  return std::distance(fs::directory_iterator(folder), fs::directory_iterator());
}

TEST_F(ThereAndBack, the_disk_is_as_before_and_the_tree_restored_without_a_walk) {
  const auto before = photographOf(tree_.path());
  click("idleScanHome");
  finishScan();
  ASSERT_EQ(walksSoFar(), 1);

  for (const char* below : {"Movies", "notes.txt", "caf\xE9\n.zip"}) {
    clickHolding(Qt::ShiftModifier, tilePoint(below));
  }
  ASSERT_EQ(session().selection().selectedNodes().size(), 3U);
  click("queueSelection");
  ASSERT_EQ(session().cleanupQueue().queue().size(), 3U);
  EXPECT_EQ(text("moveToTrash"), QStringLiteral("Move 3 to Trash · 10.0 MB"));
  click("moveToTrash");
  EXPECT_FALSE(shows("cleanupQueue"));

  EXPECT_FALSE(fs::exists(tree_.at("Movies")));
  EXPECT_FALSE(fs::exists(tree_.at("notes.txt")));
  EXPECT_FALSE(fs::exists(tree_.at("caf\xE9\n.zip")));
  EXPECT_TRUE(fs::exists(tree_.at("Code/main.cpp")));
  EXPECT_EQ(itemsIn(trashFiles()), 3);
  EXPECT_EQ(itemsIn(trashInfos()), 3);
  finishScan();
  EXPECT_EQ(session().navigation().current()->children().size(), 2U);

  click("putBack");
  EXPECT_EQ(text("toast"), QStringLiteral("Put back 3 items"));
  finishScan();
  EXPECT_EQ(photographOf(tree_.path()), before);
  EXPECT_EQ(itemsIn(trashFiles()), 0);
  EXPECT_EQ(itemsIn(trashInfos()), 0);
  ASSERT_EQ(walksSoFar(), 3);

  const std::optional<DiskNode> tree = session().navigation().current();
  restart();
  EXPECT_TRUE(shows("canvas"));
  ASSERT_TRUE(session().navigation().current().has_value());
  EXPECT_EQ(differenceOf(*tree, *session().navigation().current()), "");
  EXPECT_EQ(session().run().scanRoot(), tree_.path());
  hoverAt(tilePoint("caf\xE9\n.zip"));
  EXPECT_EQ(session().selection().focused()->path(), tree_.at("caf\xE9\n.zip"));
  dispatch_.drainAll();
  EXPECT_EQ(walksSoFar(), 3);
  EXPECT_EQ(photographOf(tree_.path()), before);
}

TEST_F(ThereAndBack, items_stay_in_the_trash_for_other_programs_when_the_run_ends) {
  click("idleScanHome");
  finishScan();
  hoverAt(tilePoint("notes.txt"));
  press(Qt::Key_Backspace, Qt::ControlModifier);
  ASSERT_FALSE(fs::exists(tree_.at("notes.txt")));
  finishScan();
  restart();
  // Undo works within one run only; the item is in the Trash nevertheless.
  EXPECT_FALSE(shows("putBack"));
  EXPECT_EQ(itemsIn(trashFiles()), 1);
  std::ifstream info(trashInfos() + "/notes.txt.trashinfo");
  const std::string record(std::istreambuf_iterator<char>(info), {});
  EXPECT_NE(record.find("\nPath=" + tree_.at("notes.txt") + "\n"), std::string::npos) << record;
}

}  // namespace
}  // namespace tessaly
