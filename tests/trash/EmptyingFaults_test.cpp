// Emptying with each system call failing in turn, and with the program killed before and after
// each: nothing outside of the Trash changes, remaining items are complete and can be put back, and
// emptying again leaves an empty Trash.
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <set>
#include <sys/mount.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <utility>

#include "platform/linux/trash/TrashListing.h"
#include "platform/linux/trash/UserTrashFolders.h"
#include "support/PlainFiles.h"
#include "support/PrivateMounts.h"
#include "support/SystemCallTrace.h"
#include "trash/TrashOnDisk.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using End = TracedRun::End;

// Everything below a folder with kinds, permissions and contents, as one text; without the contents
// of folders that this user may not open.
std::string pictureOf(const std::string& path) {
  std::string picture;
  const auto add = [&](const fs::path& item) {
    picture += item.string().substr(path.size()) + " " + std::to_string(permissionsOf(item)) + " ";
    if (fs::is_symlink(item)) {
      picture += "-> " + fs::read_symlink(item).string();
    } else if (!fs::is_directory(item)) {
      picture += contentOf(item.string());
    }
    picture += "\n";
  };
  add(path);
  if (fs::is_symlink(path) || !fs::is_directory(path)) return picture;
  std::set<fs::path> sorted;
  constexpr auto options = fs::directory_options::skip_permission_denied;
  for (const auto& entry : fs::recursive_directory_iterator(path, options)) {
    sorted.insert(entry.path());
  }
  for (const fs::path& item : sorted) add(item);
  return picture;
}

class EmptyingFaults : public testing::Test {
 protected:
  void SetUp() override {
    const std::string obstacle = SystemCallTrace::obstacle();
    if (!obstacle.empty()) GTEST_SKIP() << obstacle;
    makeReady();
    outside_ = outside();
    for (const std::string& name : disk_->files())
      items_[name] = pictureOf(inTrash("files/" + name));
  }

  void makeReady() {
    disk_ = std::make_unique<TrashOnDisk>();
    disk_->tree.plant("here", "kept/\n  deeper/\n    file 4K\n  file 4K\n");
    disk_->tree.plant("home", R"(
      data/
        Trash/
          files/
            film 4K
            folder/
              deeper/
                second 4K
              out -> ../../../../../here/kept
            closed/ mode=0500
              inside/ mode=0
                film 4K
            empty/
            link -> ../../../../here/kept
            unknown
          info/
            gone.trashinfo
          expunged/
            1/
              film 4K
    )");
    for (const char* name : {"film", "folder", "closed", "empty", "link"}) {
      putFile(inTrash("info/" + std::string(name) + ".trashinfo"), name);
    }
    putFile(inTrash("directorysizes"), "4096 1600000000 folder\n");
  }

  std::string act() {
    const EmptiedTrash emptied = disk_->can().empty();
    return std::to_string(emptied.deleted) + " deleted, " + told(emptied);
  }

  std::string inTrash(const std::string& below) const { return disk_->homeTrash() + "/" + below; }

  std::string outside() const { return pictureOf(disk_->tree.at("here")); }

  // "" if all remaining items are unchanged and still have their records.
  std::string damage(bool mayBeOpened) const {
    for (const std::string& name : disk_->files()) {
      const auto known = items_.find(name);
      if (known == items_.end()) return name + " is new";
      // Its permissions change shortly before it is deleted.
      const bool isCompared = !mayBeOpened || name != "closed";
      if (isCompared && pictureOf(inTrash("files/" + name)) != known->second) {
        return name + " is not whole";
      }
      const std::string inside = inTrash("files/closed/inside");
      const bool canLook = ::access(inside.c_str(), X_OK) == 0;
      if (name == "closed" && canLook && contentOf(inside + "/film").empty()) {
        return "closed is not whole";
      }
      const std::string record = contentOf(inTrash("info/" + name + ".trashinfo"));
      if (record != name && name != "unknown") return name + " has lost its record";
    }
    return "";
  }

  // Whether the folder still has a record although it is neither among the items nor set aside.
  bool recordOutlivesFolder() const {
    if (!isThere(inTrash("info/folder.trashinfo")) || isThere(inTrash("files/folder")))
      return false;
    for (const std::string& name : TrashOnDisk::namesIn(inTrash("expunged"))) {
      if (pictureOf(inTrash("expunged/" + name)) == items_.at("folder")) return false;
    }
    return true;
  }

  std::string remains() const {
    std::string text;
    for (const std::string& name : disk_->files()) text += "files/" + name + " ";
    for (const std::string& name : disk_->infos()) text += "info/" + name + " ";
    for (const std::string& name : TrashOnDisk::namesIn(inTrash("expunged"))) {
      text += "expunged/" + name + " ";
    }
    return text;
  }

  void expectEmptyAfterOneMore(const std::string& where) {
    const EmptiedTrash emptied = disk_->can().empty();
    EXPECT_EQ(told(emptied), "") << where;
    EXPECT_EQ(remains(), "") << where;
    EXPECT_FALSE(isThere(inTrash("expunged"))) << where;
    EXPECT_FALSE(isThere(inTrash("directorysizes"))) << where;
    EXPECT_EQ(outside(), outside_) << where;
  }

  std::unique_ptr<TrashOnDisk> disk_;
  std::map<std::string, std::string> items_;
  std::string outside_;
};

TEST_F(EmptyingFaults, remaining_items_are_complete_wherever_emptying_is_killed) {
  std::set<std::size_t> left;
  std::size_t stop = 1;
  for (;; ++stop) {
    makeReady();
    const TracedRun run = SystemCallTrace::killedAt(stop, [&] { return act(); });
    const std::string where = "stop " + std::to_string(stop);
    ASSERT_EQ(outside(), outside_) << where;
    ASSERT_EQ(damage(true), "") << where;
    ASSERT_FALSE(recordOutlivesFolder()) << where;
    left.insert(disk_->files().size());
    if (run.end != End::killed) {
      EXPECT_EQ(run.end, End::finished) << run.told;
      EXPECT_EQ(run.told, "6 deleted, ");
      EXPECT_EQ(remains(), "");
      break;
    }
    expectEmptyAfterOneMore(where);
  }
  EXPECT_EQ(left, (std::set<std::size_t>{0, 1, 2, 3, 4, 5, 6}));
  std::printf("killed at each of %zu places\n", stop - 1);
}

// A power cut has the effect of a kill: the move out of the items is on disk before anything in the
// folder is deleted.
TEST_F(EmptyingFaults, each_move_is_on_disk_before_anything_in_the_item_is_deleted) {
  const TracedRun run = SystemCallTrace::of([&] { return act(); });
  std::size_t moves = 0;
  bool isSynced = true;
  for (const long call : run.calls) {
    if (call == SYS_renameat2) {
      ++moves;
      isSynced = false;
    }
    if (call == SYS_fsync) isSynced = true;
    if (call == SYS_unlinkat) {
      EXPECT_TRUE(isSynced);
    }
  }
  EXPECT_EQ(moves, 2U);
}

// On a file system without space for the folder "expunged".
TEST_F(EmptyingFaults, remaining_items_are_complete_wherever_emptying_is_killed_without_space) {
  TempTree tree("volume/\n");
  const std::string told = inPrivateMounts([&]() -> std::string {
    const std::string folder = tree.at("volume/Trash");
    TrashConfig config = disk_->configWith({});
    config.homeTrash = folder;
    UserTrashCan can(config, anHourLater);
    std::size_t stop = 1;
    for (;; ++stop) {
      const char* volume = "volume";
      if (::mount("tmpfs", tree.at(volume).c_str(), "tmpfs", 0, "nr_inodes=32") != 0) {
        return refusal();
      }
      tree.plant(volume, R"(
        Trash/
          files/
            one/
              deeper/
                film
            two/
              film
          info/
            one.trashinfo
            two.trashinfo
      )");
      for (int i = 0; std::ofstream(tree.at("volume/file" + std::to_string(i))).is_open(); ++i) {
      }
      const TracedRun run =
          SystemCallTrace::killedAt(stop, [&] { return tessaly::told(can.empty()); });
      const std::string where = " at stop " + std::to_string(stop);
      const auto has = [&](const char* below) { return isThere(folder + "/" + below); };
      if (has("files/one") && !(has("files/one/deeper/film") && has("info/one.trashinfo"))) {
        return "one is not whole" + where;
      }
      if (has("files/two") && !(has("files/two/film") && has("info/two.trashinfo"))) {
        return "two is not whole" + where;
      }
      if (run.end == End::crashed || !run.told.empty()) return run.told + where;
      const std::string again = tessaly::told(can.empty());
      if (!again.empty()) return again + where;
      if (entriesOf(folder) != std::vector<std::string>{"files", "info"} ||
          !fs::is_empty(folder + "/files") || !fs::is_empty(folder + "/info")) {
        return "something is left" + where;
      }
      if (::umount(tree.at(volume).c_str()) != 0) return refusal();
      if (run.end == End::finished) break;
    }
    return stop > 100 ? "" : "few stops";
  });
  if (told.starts_with("refused")) GTEST_SKIP() << "no mounting here, " << told;
  EXPECT_EQ(told, "");
}

// Records without an item are deleted, so that of an item which cannot be examined must not count
// as one.
TEST_F(EmptyingFaults, records_of_items_count_as_no_orphans_whichever_call_of_the_listing_fails) {
  std::set<std::string> found;
  for (const int code : {EIO, EACCES, EMFILE}) {
    for (std::size_t call = 1;; ++call) {
      UserTrashFolders folders = homeTrashFolder(disk_->config());
      ASSERT_EQ(folders.all.size(), 1U);
      const TracedRun run = SystemCallTrace::failingAt(call, code, [&] {
        EmptiedTrash result;
        const auto listing =
            listTrashFolder(std::move(folders.all.front()), geteuid(), anHourLater, result);
        std::string orphans;
        if (listing) {
          for (const ListedEntry& orphan : listing->orphans) orphans += orphan.name + " ";
        }
        return orphans;
      });
      ASSERT_EQ(run.end, End::finished) << run.told;
      EXPECT_TRUE(run.told.empty() || run.told == "gone.trashinfo ")
          << run.told << "at call " << call << " with errno " << code;
      found.insert(run.told);
      if (run.failedCall == -1) break;
    }
  }
  EXPECT_EQ(found.size(), 2U);
}

class EmptyingFailures : public EmptyingFaults, public testing::WithParamInterface<int> {};
INSTANTIATE_TEST_SUITE_P(Codes, EmptyingFailures,
                         testing::Values(EIO, EACCES, EINTR, EBUSY, ENOTEMPTY, EROFS, ENOENT,
                                         ENOSPC, EXDEV, EMFILE, EINVAL));

TEST_P(EmptyingFailures, remaining_items_are_complete_and_reported_whichever_call_fails) {
  const int code = GetParam();
  std::size_t incomplete = 0;
  std::size_t call = 1;
  for (;; ++call) {
    makeReady();
    const TracedRun run = SystemCallTrace::failingAt(call, code, [&] { return act(); });
    const std::string where = "call " + std::to_string(call) + ", number " +
                              std::to_string(run.failedCall) + ", " + run.told;
    ASSERT_EQ(run.end, End::finished) << where;
    ASSERT_EQ(outside(), outside_) << where;
    ASSERT_EQ(damage(false), "") << where;
    const bool isComplete = run.told.ends_with("deleted, ");
    if (!isComplete) ++incomplete;
    // An item that the system reports as missing counts as vanished.
    if (isComplete && code != ENOENT) {
      EXPECT_EQ(remains(), "") << where;
    }
    const std::size_t gone = items_.size() - disk_->files().size();
    EXPECT_LE(std::stoul(run.told), gone) << where;
    expectEmptyAfterOneMore(where);
    if (run.failedCall == -1) break;
  }
  EXPECT_GT(call, 50U);
  if (code == EIO) {
    EXPECT_GT(incomplete, 20U);
  }
  std::printf("errno %d: %zu calls failed, %zu times something stayed\n", code, call - 1,
              incomplete);
}

}  // namespace
}  // namespace tessaly
