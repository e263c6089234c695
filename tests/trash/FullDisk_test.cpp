// Moving items to the Trash when the disk of the home Trash is full.
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "platform/linux/trash/InfoReserve.h"
#include "support/ForkedChild.h"
#include "support/Needs.h"
#include "support/PlainFiles.h"
#include "support/PrivateMounts.h"
#include "support/SystemCallTrace.h"
#include "trash/TrashOnDisk.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using Kind = SystemError::Kind;
using Body = std::function<std::string()>;
using End = TracedRun::End;

// Writes until the disk is full.
void fill(const std::string& path) {
  constexpr std::size_t large = std::size_t{1} << 20U;
  // Twice, since the system provides some of the freed space only after a first attempt.
  for (int round = 0; round < 2; ++round) {
    for (const std::size_t size : {large, std::size_t{4096}, std::size_t{1}}) {
      const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
      const std::string block(size, 'x');
      while (write(file, block.data(), block.size()) > 0) {
      }
      fsync(file);
      close(file);
    }
  }
}

// Whether a file of one byte can be created.
bool hasRoom(const std::string& path) {
  const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  if (file < 0) return false;
  const bool isWritten = write(file, "x", 1) == 1 && fsync(file) == 0;
  close(file);
  unlink(path.c_str());
  return isWritten;
}

// A disk on the folder "volume" with a home, a Trash in it, and items.
class FullDisk : public testing::Test {
 protected:
  FullDisk() { disk_.tree.plant("volume/\n"); }

  static void expectInPrivateMounts(const Body& body) {
    const std::string told = inPrivateMounts(body);
    if (told.starts_with("refused")) GTEST_SKIP() << "no mounting here, " << told;
    EXPECT_EQ(told, "");
  }

  // "" or why it cannot be mounted.
  std::string mountTmpfs(const char* options, Need need = Need::mounts) const {
    return ::mount("tmpfs", volume().c_str(), "tmpfs", 0, options) == 0 ? "" : refusal(need);
  }
  std::string mountImage(const std::string& make, Need need = Need::image) const {
    const std::string image = "'" + disk_.tree.at("disk") + "'";
    const std::string line =
        make + " " + image + " >/dev/null && mount -o loop " + image + " '" + volume() + "'";
    return std::system(("{ " + line + "; } >&2").c_str()) == 0 ? ""
                                                               : "refused: " + needs(need, line);
  }

  std::string volume() const { return disk_.tree.at("volume"); }
  std::string on(const std::string& below) const { return volume() + "/" + below; }
  std::string reserve() const { return on("data/Trash/") + InfoReserve::folderName; }
  std::size_t kept() const { return TrashOnDisk::namesIn(reserve()).size(); }

  UserTrashMover mover() const { return UserTrashMover(config()); }
  TrashConfig config() const {
    TrashConfig config = disk_.configWith({});
    config.mountinfo = "/proc/self/mountinfo";
    config.homeTrash = on("data/Trash");
    return config;
  }
  Result<ItemInTrash> move(const std::string& name) const { return mover().moveToTrash(on(name)); }

  // Creates the items "item00" to "item39", and moves another item, which creates the reserve.
  std::string makeReady() const {
    for (int i = 0; i < 40; ++i) {
      const std::string number = std::to_string(100 + i).substr(1);
      putFile(on("item" + number), "content of " + number);
    }
    putFile(on("first"), "x");
    if (const auto moved = move("first"); !moved) return told(moved);
    return kept() == InfoReserve::count ? "" : std::to_string(kept()) + " are kept";
  }

  // What is wrong unless the item is in the Trash at `place`, with its record.
  std::string objection(const std::string& place, const std::string& name) const {
    if (isThere(on(name))) return name + " is still there";
    if (contentOf(place) != "content of " + name.substr(4)) return name + " is not whole";
    if (recordedPath(place) != on(name)) return "recorded is " + contentOf(infoPathOf(place));
    return contentOf(infoPathOf(place)).ends_with("\n\n") ? "something is behind the record" : "";
  }

  // Moves items and puts them back when only the reserve has space for their records.
  std::string useUp() const {
    std::string wrong = makeReady();
    if (!wrong.empty()) return wrong;
    std::size_t taken = 0;
    for (int i = 0; i < 40; ++i) {
      const std::string name = "item" + std::to_string(100 + i).substr(1);
      fill(on("full"));
      if (hasRoom(on("data/Trash/info/more"))) return "refused: the disk does not get full";
      const std::size_t before = kept();
      const Result<ItemInTrash> moved = move(name);
      if (!moved) {
        if (moved.error().kind != Kind::noSpace) return told(moved);
        if (before != 0) return told(moved) + " with " + std::to_string(before) + " kept";
        if (contentOf(on(name)).empty()) return name + " is gone";
        if (isThere(on("data/Trash/info/" + name + ".trashinfo"))) return "an info is left";
        break;
      }
      ++taken;
      if (kept() != before - 1) return "taken from elsewhere";
      wrong = objection(moved.value().path, name);
      if (!wrong.empty()) return wrong;
      if (i == 0) {
        const Outcome back = mover().putBack(moved.value(), on(name));
        if (!back || contentOf(on(name)) != "content of 00") return "put back: " + told(back);
      }
    }
    if (taken != InfoReserve::count) return std::to_string(taken) + " were recorded";
    fs::remove(on("full"));
    if (const auto moved = move("item30"); !moved) return told(moved);
    return kept() == InfoReserve::count ? "" : "it was not filled again";
  }

  TrashOnDisk disk_;
};

TEST_F(FullDisk, items_move_while_there_is_a_reserve_on_ext4) {
  disk_.tree.plant("disk sparse=16M\n");
  expectInPrivateMounts([&] {
    const std::string refused = mountImage("mkfs.ext4 -q -m 0");
    return refused.empty() ? useUp() : refused;
  });
}

TEST_F(FullDisk, items_move_while_there_is_a_reserve_on_tmpfs) {
  expectInPrivateMounts([&] {
    std::string refused = mountTmpfs("size=4m");
    return refused.empty() ? useUp() : refused;
  });
}

// btrfs has separate space for names and small files, and copies on write by default.
TEST_F(FullDisk, items_move_while_there_is_a_reserve_on_btrfs) {
  disk_.tree.plant("disk sparse=256M\n");
  expectInPrivateMounts([&] {
    const std::string refused = mountImage("mkfs.btrfs -q", Need::btrfs);
    return refused.empty() ? useUp() : refused;
  });
}

TEST_F(FullDisk, items_move_without_space_for_one_more_file) {
  expectInPrivateMounts([&]() -> std::string {
    std::string refused = mountTmpfs("size=4m,nr_inodes=256");
    if (!refused.empty()) return refused;
    std::string wrong = makeReady();
    if (!wrong.empty()) return wrong;
    const auto takeAll = [&] {
      for (int i = 0; std::ofstream(on("more" + std::to_string(i))).is_open(); ++i) {
      }
    };
    takeAll();
    const Result<ItemInTrash> moved = move("item00");
    if (!moved) return told(moved);
    wrong = objection(moved.value().path, "item00");
    if (!wrong.empty()) return wrong;
    fs::remove_all(reserve());
    takeAll();
    const Result<ItemInTrash> refusedMove = move("item01");
    if (refusedMove) return "it went to " + refusedMove.value().path;
    return refusedMove.error().kind == Kind::noSpace && isThere(on("item01")) ? ""
                                                                              : told(refusedMove);
  });
}

TEST_F(FullDisk, items_move_when_the_user_has_reached_his_quota) {
  if (geteuid() != 0) GTEST_SKIP() << needs(Need::root, "only root can set a quota");
  ASSERT_EQ(chmod(disk_.tree.path().c_str(), 0777), 0);
  expectInPrivateMounts([&]() -> std::string {
    std::string refused =
        mountTmpfs("size=64m,usrquota,usrquota_block_hardlimit=4m,mode=777", Need::quota);
    if (!refused.empty()) return refused;
    putFile(disk_.tree.at("mountinfo0"), "");
    if (chmod(disk_.tree.at("mountinfo0").c_str(), 0666) != 0) return "chmod";
    return asOtherUser([&] { return useUp(); });
  });
}

// The reserve takes nothing from scarce space, such as a mebibyte or 64 files.
TEST_F(FullDisk, no_reserve_is_kept_where_space_is_scarce) {
  for (const char* options : {"size=1m", "size=4m,nr_inodes=48"}) {
    expectInPrivateMounts([&]() -> std::string {
      std::string refused = mountTmpfs(options);
      if (!refused.empty()) return refused;
      disk_.put(on("film"), "x");
      const Result<ItemInTrash> moved = move("film");
      if (!moved) return told(moved);
      return kept() == 0 ? "" : std::to_string(kept()) + " are kept";
    });
  }
}

TEST_F(FullDisk, the_longest_path_is_recorded) {
  expectInPrivateMounts([&]() -> std::string {
    std::string refused = mountTmpfs("size=4m");
    if (!refused.empty()) return refused;
    std::string wrong = makeReady();
    if (!wrong.empty()) return wrong;
    std::string folder = volume();
    const std::string part = "/" + std::string(200, '\xff');
    while (folder.size() + 2 * part.size() < 4096) folder += part;
    fs::create_directories(folder);
    putFile(folder + "/film", "x");
    fill(on("full"));
    const Result<ItemInTrash> moved = mover().moveToTrash(folder + "/film");
    if (!moved) return told(moved);
    if (kept() != InfoReserve::count - 1) return "there was room";
    return recordedPath(moved.value().path) == folder + "/film" ? "" : "it is not recorded";
  });
}

TEST_F(FullDisk, the_reserve_is_kept_if_the_item_cannot_be_moved) {
  expectInPrivateMounts([&]() -> std::string {
    std::string refused = mountTmpfs("size=4m");
    if (!refused.empty()) return refused;
    std::string wrong = makeReady();
    if (!wrong.empty()) return wrong;
    fill(on("full"));
    // A file with the wanted name is in "files" already, without a record.
    fs::rename(on("item01"), on("data/Trash/files/item00"));
    const Result<ItemInTrash> moved = move("item00");
    if (!moved) return told(moved);
    if (kept() != InfoReserve::count - 1) return std::to_string(kept()) + " are kept";
    return objection(moved.value().path, "item00");
  });
}

class Reserve : public testing::Test {
 protected:
  Reserve() {
    disk_.put(disk_.at("first"), "x");
    EXPECT_EQ(told(disk_.mover().moveToTrash(disk_.at("first"))), "");
  }

  std::string reserve(const std::string& below = "") const {
    return disk_.homeTrash() + "/" + InfoReserve::folderName + "/" + below;
  }

  // Moves an item when ordinary writes fail for lack of space.
  std::string moveWithoutRoom(const std::string& name, int code = ENOSPC) {
    disk_.put(disk_.at(name), "content");
    const TracedRun run = SystemCallTrace::refusing(
        {{SYS_write, code}}, [&] { return told(disk_.mover().moveToTrash(disk_.at(name))); });
    EXPECT_EQ(run.end, End::finished);
    return run.told;
  }

  const std::string obstacle_ = SystemCallTrace::obstacle();
  TrashOnDisk disk_;
};

TEST_F(Reserve, the_reserve_is_private_and_has_allocated_blocks) {
  struct stat status {};
  ASSERT_EQ(lstat(reserve().c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777U, 0700U);
  ASSERT_EQ(entriesOf(reserve()).size(), std::size_t{InfoReserve::count});
  for (const std::string& name : entriesOf(reserve())) {
    ASSERT_EQ(lstat(reserve(name).c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0600U);
    EXPECT_GE(status.st_size, 4096);
    EXPECT_GE(status.st_blocks * 512, status.st_size);
  }
}

TEST_F(Reserve, the_reserve_is_neither_counted_nor_emptied) {
  const std::vector<std::string> before = entriesOf(reserve());
  EXPECT_EQ(disk_.can().count().value(), 1);
  EXPECT_EQ(told(disk_.can().empty()), "");
  EXPECT_EQ(disk_.can().count().value(), 0);
  EXPECT_EQ(entriesOf(reserve()), before);
}

TEST_F(Reserve, the_reserve_is_refilled_by_emptying_if_it_exists) {
  fs::remove(reserve("3"));
  EXPECT_EQ(told(disk_.can().empty()), "");
  EXPECT_EQ(entriesOf(reserve()).size(), std::size_t{InfoReserve::count});
  fs::remove_all(reserve());
  EXPECT_EQ(told(disk_.can().empty()), "");
  EXPECT_FALSE(isThere(reserve()));
}

TEST_F(Reserve, the_reserve_is_recreated_if_a_copy_of_it_has_no_blocks) {
  fs::resize_file(reserve("1"), 0);
  fs::resize_file(reserve("2"), 0);
  fs::resize_file(reserve("2"), InfoReserve::length);
  disk_.put(disk_.at("second"), "x");
  EXPECT_EQ(told(disk_.mover().moveToTrash(disk_.at("second"))), "");
  for (const char* name : {"1", "2"}) {
    struct stat status {};
    ASSERT_EQ(lstat(reserve(name).c_str(), &status), 0);
    EXPECT_GE(status.st_blocks * 512, std::int64_t{InfoReserve::length}) << name;
  }
}

TEST_F(Reserve, the_reserve_becomes_a_record_like_any_other) {
  if (!obstacle_.empty()) GTEST_SKIP() << obstacle_;
  EXPECT_EQ(moveWithoutRoom("film"), "");
  const std::string place = disk_.homeTrash() + "/files/film";
  EXPECT_EQ(contentOf(place), "content");
  EXPECT_EQ(recordedPath(place), disk_.at("film"));
  EXPECT_EQ(permissionsOf(infoPathOf(place)), 0600U);
  EXPECT_FALSE(contentOf(infoPathOf(place)).ends_with("\n\n"));
}

TEST_F(Reserve, the_reserve_is_used_when_the_user_has_reached_his_quota) {
  if (!obstacle_.empty()) GTEST_SKIP() << obstacle_;
  EXPECT_EQ(moveWithoutRoom("film", EDQUOT), "");
  EXPECT_EQ(recordedPath(disk_.homeTrash() + "/files/film"), disk_.at("film"));
  fs::remove_all(reserve());
  EXPECT_EQ(moveWithoutRoom("second", EDQUOT),
            SystemError::fromErrno(EDQUOT, disk_.at("second")).description());
  EXPECT_TRUE(isThere(disk_.at("second")));
}

TEST_F(Reserve, the_reserve_skips_names_that_are_taken) {
  if (!obstacle_.empty()) GTEST_SKIP() << obstacle_;
  disk_.put(disk_.homeTrash() + "/info/film.trashinfo", "of another");
  EXPECT_EQ(moveWithoutRoom("film"), "");
  EXPECT_EQ(contentOf(disk_.homeTrash() + "/info/film.trashinfo"), "of another");
  EXPECT_EQ(recordedPath(disk_.homeTrash() + "/files/film.2"), disk_.at("film"));
}

TEST_F(Reserve, the_reserve_never_writes_to_files_of_others) {
  if (!obstacle_.empty()) GTEST_SKIP() << obstacle_;
  const std::string content(InfoReserve::length, 'k');
  disk_.put(disk_.at("kept"), content);
  for (const std::string& name : entriesOf(reserve())) fs::remove(reserve(name));
  fs::create_symlink(disk_.at("kept"), reserve("1"));
  fs::create_hard_link(disk_.at("kept"), reserve("2"));
  ASSERT_EQ(mkfifo(reserve("3").c_str(), 0600), 0);
  fs::create_directory(reserve("4"));
  const std::vector<std::string> before = entriesOf(reserve());
  EXPECT_NE(moveWithoutRoom("film"), "");
  EXPECT_EQ(contentOf(disk_.at("film")), "content");
  EXPECT_EQ(contentOf(disk_.at("kept")), content);
  EXPECT_EQ(entriesOf(reserve()), before);
  EXPECT_FALSE(isThere(disk_.homeTrash() + "/info/film.trashinfo"));
}

TEST_F(Reserve, the_reserve_is_never_a_link) {
  if (!obstacle_.empty()) GTEST_SKIP() << obstacle_;
  const std::string elsewhere = disk_.at("elsewhere");
  fs::rename(disk_.homeTrash() + "/" + InfoReserve::folderName, elsewhere);
  fs::remove(elsewhere + "/3");
  fs::create_directory_symlink(elsewhere, disk_.homeTrash() + "/" + InfoReserve::folderName);
  const std::vector<std::string> before = entriesOf(elsewhere);
  EXPECT_NE(moveWithoutRoom("film"), "");
  disk_.put(disk_.at("second"), "x");
  EXPECT_EQ(told(disk_.mover().moveToTrash(disk_.at("second"))), "");
  EXPECT_EQ(entriesOf(elsewhere), before);
}

TEST_F(Reserve, the_reserve_is_never_the_folder_of_another_user) {
  if (!obstacle_.empty()) GTEST_SKIP() << obstacle_;
  if (geteuid() != 0) GTEST_SKIP() << needs(Need::root, "only root gives folders away");
  ASSERT_EQ(chown(reserve().c_str(), 1, 1), 0);
  fs::remove(reserve("3"));
  const std::vector<std::string> before = entriesOf(reserve());
  EXPECT_NE(moveWithoutRoom("film"), "");
  EXPECT_EQ(entriesOf(reserve()), before);
}

// At each step of a move, another one takes from the reserve.
TEST_F(Reserve, each_file_of_the_reserve_is_used_by_one_move) {
  if (!obstacle_.empty()) GTEST_SKIP() << obstacle_;
  std::size_t stop = 1;
  for (;; ++stop) {
    const std::string one = "one" + std::to_string(stop);
    const std::string other = "other" + std::to_string(stop);
    disk_.put(disk_.at(one), "1");
    disk_.put(disk_.at(other), "2");
    const auto moveOther = [&] { EXPECT_EQ(moveWithoutRoom(other), ""); };
    const TracedRun run = SystemCallTrace::interruptedAt(
        stop, moveOther, [&] { return told(disk_.mover().moveToTrash(disk_.at(one))); },
        {{SYS_write, ENOSPC}});
    ASSERT_EQ(run.told, "") << stop;
    const std::string files = disk_.homeTrash() + "/files/";
    ASSERT_EQ(recordedPath(files + one), disk_.at(one)) << stop;
    if (!run.wasInterrupted) break;
    ASSERT_EQ(recordedPath(files + other), disk_.at(other)) << stop;
  }
  EXPECT_GT(stop, 100U);
}

// "original" or "trash" for the item, or what is wrong. `mayHaveMore` allows line feeds behind the
// record.
std::string placeOf(const TrashOnDisk& disk, bool mayHaveMore) {
  const bool isOriginal = contentOf(disk.at("film")) == "content";
  const std::string place = disk.homeTrash() + "/files/film";
  if (isOriginal) return isThere(place) ? "two copies" : "original";
  if (contentOf(place) != "content") return "no whole copy";
  if (recordedPath(place) != disk.at("film")) return "an item without its record";
  const std::string record = contentOf(infoPathOf(place));
  const std::size_t end = record.find("\n\n");
  if (end == std::string::npos) return "trash";
  if (record.find_first_not_of('\n', end) != std::string::npos) return "a damaged record";
  return mayHaveMore ? "trash" : "a long record";
}

class ReserveFaults : public testing::Test {
 protected:
  void SetUp() override {
    const std::string obstacle = SystemCallTrace::obstacle();
    if (!obstacle.empty()) GTEST_SKIP() << obstacle;
  }

  // Mounts a full disk with the item and the home Trash.
  std::string mountFull() {
    const std::string point = disk_.tree.path();
    if (::mount("tmpfs", point.c_str(), "tmpfs", 0, "size=4m") != 0) return refusal();
    for (const char* folder : {"here", "home"}) fs::create_directory(disk_.tree.at(folder));
    putFile(disk_.at("first"), "x");
    putFile(disk_.at("film"), "content");
    std::string wrong = told(disk_.mover().moveToTrash(disk_.at("first")));
    fill(disk_.at("full"));
    return wrong;
  }
  bool unmount() { return ::umount(disk_.tree.path().c_str()) == 0; }

  std::string act() { return told(disk_.mover().moveToTrash(disk_.at("film"))); }

  std::size_t kept() const {
    std::size_t count = 0;
    const std::string folder = disk_.homeTrash() + "/" + InfoReserve::folderName;
    for (const std::string& name : TrashOnDisk::namesIn(folder)) {
      count += fs::file_size(folder + "/" + name) == InfoReserve::length ? 1 : 0;
    }
    return count;
  }

  static void expectInPrivateMounts(const Body& body) {
    const std::string told = inPrivateMounts(body);
    if (told.starts_with("refused")) GTEST_SKIP() << "no mounting here, " << told;
    EXPECT_EQ(told, "");
  }

  static constexpr std::size_t all = InfoReserve::count;
  TrashOnDisk disk_;
};

TEST_F(ReserveFaults, one_copy_is_left_wherever_a_move_with_the_reserve_is_killed) {
  expectInPrivateMounts([&]() -> std::string {
    std::size_t inTrash = 0;
    std::size_t stop = 1;
    for (;; ++stop) {
      const std::string where = " at stop " + std::to_string(stop);
      if (std::string wrong = mountFull(); !wrong.empty()) return wrong;
      const TracedRun run = SystemCallTrace::killedAt(stop, [&] { return act(); });
      const bool isKilled = run.end == End::killed;
      const std::string place = placeOf(disk_, isKilled);
      if (place != "original" && place != "trash") return place + where;
      if (kept() + 1 < all) return std::to_string(kept()) + " are kept" + where;
      inTrash += place == "trash" ? 1 : 0;
      if (place == "original") {
        if (std::string wrong = act(); !wrong.empty()) return wrong + where;
      }
      if (!unmount()) return refusal();
      if (isKilled) continue;
      if (run.end != End::finished || place != "trash") return run.told + where;
      break;
    }
    return stop > 100 && inTrash > 10 ? "" : "few stops";
  });
}

TEST_F(ReserveFaults, the_result_of_a_move_with_the_reserve_is_true_whichever_call_fails) {
  for (const int code : {EIO, EACCES, ENOSPC, EINTR, EINVAL, EEXIST}) {
    expectInPrivateMounts([&]() -> std::string {
      for (std::size_t call = 1;; ++call) {
        if (std::string wrong = mountFull(); !wrong.empty()) return wrong;
        const TracedRun run = SystemCallTrace::failingAt(call, code, [&] { return act(); });
        const std::string where = " with errno " + std::to_string(code) + " at call " +
                                  std::to_string(call) + ", number " +
                                  std::to_string(run.failedCall) + ": " + run.told;
        if (run.end != End::finished) return "crashed" + where;
        std::string place = placeOf(disk_, true);
        // The item may have another name in the Trash.
        if (place == "no whole copy" && run.told.empty()) {
          for (const std::string& name : disk_.files()) {
            const std::string path = disk_.homeTrash() + "/files/" + name;
            if (recordedPath(path) == disk_.at("film")) place = "trash";
          }
        }
        if (place != (run.told.empty() ? "trash" : "original")) return place + where;
        if (place == "original") {
          for (const std::string& name : disk_.infos()) {
            if (name.starts_with("film")) return "an info is left" + where;
          }
        }
        // A reserve file is given back if the item could not be moved.
        const bool isGivenBack = place == "original" && run.failedCall == SYS_renameat2;
        if (kept() + (isGivenBack ? 0 : 1) < all) {
          return std::to_string(kept()) + " are kept" + where;
        }
        if (!unmount()) return refusal();
        if (run.failedCall == -1) return call > 50 ? "" : "few calls";
      }
    });
  }
}

}  // namespace
}  // namespace tessaly
