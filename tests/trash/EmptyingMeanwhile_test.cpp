// Emptying the Trash while other programs move items to it, replace items, and empty it too.
#include <array>
#include <fcntl.h>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <sys/stat.h>
#include <thread>

#include "platform/linux/trash/EmptyTrashFolder.h"
#include "platform/linux/trash/UserTrashFolders.h"
#include "support/PlainFiles.h"
#include "support/SystemCallTrace.h"
#include "trash/TrashOnDisk.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int64_t aMinute = 60;

class EmptyingMeanwhile : public testing::Test {
 protected:
  // Items of "files" in the home Trash, each with a record.
  void plantItems(const std::string& items) {
    disk_->tree.plant("home", "data/\n  Trash/ mode=0700\n    files/\n    info/\n");
    disk_->tree.plant("home/data/Trash/files", items);
    for (const std::string& name : disk_->files()) record(name);
    makeOlder(trash("files"));
  }
  // Otherwise a later item could have the time of the same clock tick, which some file systems have
  // as the only difference.
  static void makeOlder(const std::string& folder) {
    const std::array<timespec, 2> times = {timespec{1000, 0}, timespec{1000, 0}};
    for (const std::string& name : entriesOf(folder)) {
      const std::string path = folder + "/" + name;
      ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), times.data(), AT_SYMLINK_NOFOLLOW), 0);
    }
  }
  void record(const std::string& name) { putFile(recordOf(name), "record of " + name); }
  std::string recordOf(const std::string& name) const {
    return trash("info/" + name) + ".trashinfo";
  }
  std::string trash(const std::string& below) const { return disk_->homeTrash() + "/" + below; }

  TrashListing listed(const FolderClock& clock = anHourLater) {
    UserTrashFolders folders = userTrashFolders(disk_->configWith({}));
    EmptiedTrash result;
    auto listing = listTrashFolder(std::move(folders.all.at(0)), geteuid(), clock, result);
    EXPECT_EQ(told(result), "");
    return std::move(listing).value();
  }

  // The number of deleted items; expects no failure.
  static std::int64_t empty(const TrashListing& listing) {
    EmptiedTrash result;
    emptyTrashFolder(listing, geteuid(), result);
    EXPECT_EQ(told(result), "");
    return result.deleted;
  }

  std::unique_ptr<TrashOnDisk> disk_ = std::make_unique<TrashOnDisk>();
};

TEST_F(EmptyingMeanwhile, an_item_that_arrives_after_the_listing_stays) {
  plantItems("film\nfolder/\n  film\n");
  const TrashListing listing = listed();
  for (const char* name : {"film", "new"}) {
    disk_->put(disk_->at(name), "new");
    ASSERT_EQ(told(disk_->mover().moveToTrash(disk_->at(name))), "");
  }
  disk_->put(disk_->at("folder/film"), "new");
  ASSERT_EQ(told(disk_->mover().moveToTrash(disk_->at("folder"))), "");
  EXPECT_EQ(empty(listing), 2);
  EXPECT_EQ(disk_->files().size(), 3U);
  EXPECT_EQ(disk_->infos().size(), 3U);
  for (const std::string& name : disk_->files()) {
    EXPECT_NE(recordedPath(trash("files/" + name)), "") << name;
  }
}

TEST_F(EmptyingMeanwhile, an_item_that_replaces_a_listed_one_stays_with_its_record) {
  plantItems("film 4K\nempty/\nfolder/\n  film 4K\nlink -> nowhere\nunknown\n");
  fs::remove(recordOf("unknown"));
  const TrashListing listing = listed();
  for (const std::string& name : disk_->files()) {
    fs::rename(trash("files/" + name), disk_->at(name));
    fs::remove(recordOf(name));
  }
  disk_->tree.plant("home/data/Trash/files",
                    "film 4K\nempty/\nfolder/\n  film 4K\nlink -> nowhere\nunknown\n");
  const std::vector<std::string> names = disk_->files();
  for (const std::string& name : names) record(name);
  EXPECT_EQ(empty(listing), 0);
  EXPECT_EQ(disk_->files(), names);
  EXPECT_EQ(disk_->infos().size(), names.size());
  EXPECT_TRUE(isThere(trash("files/folder/film")));
}

TEST_F(EmptyingMeanwhile, a_replaced_record_stays_when_its_item_is_deleted) {
  plantItems("film\n");
  const TrashListing listing = listed();
  putFile(trash("info/other"), "record of what is to come");
  fs::rename(trash("info/other"), recordOf("film"));
  EXPECT_EQ(empty(listing), 1);
  EXPECT_THAT(disk_->infos(), ElementsAre("film.trashinfo"));
}

TEST_F(EmptyingMeanwhile, a_record_without_an_item_stays_if_it_has_one_by_now) {
  plantItems("film\n");
  for (const char* name : {"arrived", "replaced", "rewritten", "touched", "gone"}) record(name);
  makeOlder(trash("info"));
  const TrashListing listing = listed();
  putFile(trash("files/arrived"), "");
  putFile(trash("info/other"), "record of what is to come");
  fs::rename(trash("info/other"), recordOf("replaced"));
  putFile(recordOf("rewritten"), "longer than the record that was there before");
  putFile(recordOf("touched"), contentOf(recordOf("touched")));
  EXPECT_EQ(empty(listing), 1);
  EXPECT_THAT(disk_->files(), ElementsAre("arrived"));
  EXPECT_THAT(disk_->infos(), ElementsAre("arrived.trashinfo", "replaced.trashinfo",
                                          "rewritten.trashinfo", "touched.trashinfo"));
}

TEST_F(EmptyingMeanwhile, a_record_without_an_item_stays_for_a_minute) {
  plantItems("");
  record("moving");
  std::int64_t age = 0;
  struct stat status {};
  ASSERT_EQ(::lstat(recordOf("moving").c_str(), &status), 0);
  const FolderClock clock = [&](const FileDescriptor&) { return status.st_ctim.tv_sec + age; };
  UserTrashCan can(disk_->configWith({}), clock);
  // In the first case the clock was set back since.
  for (const std::int64_t young : {-aMinute, std::int64_t{0}, aMinute - 1}) {
    age = young;
    EXPECT_EQ(told(can.empty()), "");
    EXPECT_THAT(disk_->infos(), ElementsAre("moving.trashinfo")) << young;
  }
  age = aMinute;
  EXPECT_EQ(told(can.empty()), "");
  EXPECT_THAT(disk_->infos(), IsEmpty());
}

TEST_F(EmptyingMeanwhile, a_recent_record_stays_by_the_clock_of_the_disk) {
  plantItems("film\n");
  record("moving");
  EXPECT_EQ(told(UserTrashCan(disk_->configWith({})).empty()), "");
  EXPECT_THAT(disk_->files(), IsEmpty());
  EXPECT_THAT(disk_->infos(), ElementsAre("moving.trashinfo"));
}

TEST_F(EmptyingMeanwhile, the_clock_of_a_folder_is_that_of_its_files_times) {
  const auto stamp = [&](const char* name) {
    putFile(disk_->at(name), "x");
    struct stat status {};
    EXPECT_EQ(::lstat(disk_->at(name).c_str(), &status), 0);
    return std::int64_t{status.st_ctim.tv_sec};
  };
  const FileDescriptor folder(::open(disk_->at("").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  const std::int64_t before = stamp("before");
  const std::int64_t told = clockOfFolder(folder);
  EXPECT_GE(told, before);
  EXPECT_LE(told, stamp("after"));

  // Another machine may hold the disk, so its clock is asked by a stamp on the folder itself.
  const std::array<timespec, 2> longAgo = {timespec{.tv_sec = 1000, .tv_nsec = 0},
                                           timespec{.tv_sec = 1000, .tv_nsec = 0}};
  ASSERT_EQ(::futimens(folder.get(), longAgo.data()), 0);
  const std::int64_t again = clockOfFolder(folder);
  struct stat status {};
  ASSERT_EQ(::fstat(folder.get(), &status), 0);
  EXPECT_EQ(status.st_mtim.tv_sec, again);
}

TEST_F(EmptyingMeanwhile, all_folders_are_listed_before_anything_is_deleted) {
  plantItems("film\n");
  record("gone");
  const std::string second = disk_->tree.at("volume/.Trash-" + std::to_string(geteuid()));
  disk_->tree.plant("volume/\n");
  for (const char* part : {"/files", "/info"}) fs::create_directories(second + part);
  putFile(second + "/files/film", "x");
  putFile(second + "/info/gone.trashinfo", "x");
  int lists = 0;
  const FolderClock clock = [&](const FileDescriptor& folder) {
    if (++lists == 2) {
      EXPECT_TRUE(isThere(trash("files/film")));
      EXPECT_TRUE(isThere(second + "/files/film"));
      for (const std::string& files : {trash("files"), second + "/files"}) {
        putFile(files + "/new", "x");
      }
    }
    return anHourLater(folder);
  };
  const EmptiedTrash emptied =
      UserTrashCan(disk_->configWith({disk_->tree.at("volume")}), clock).empty();
  EXPECT_EQ(lists, 2);
  EXPECT_EQ(told(emptied), "");
  EXPECT_EQ(emptied.deleted, 2);
  EXPECT_THAT(disk_->files(), ElementsAre("new"));
  EXPECT_THAT(entriesOf(second + "/files"), ElementsAre("new"));
}

TEST_F(EmptyingMeanwhile, an_item_that_replaces_listed_remains_stays) {
  plantItems("");
  disk_->tree.plant("home/data/Trash", "expunged/\n  1/\n    film\n  2\n  3/\n    film\n");
  makeOlder(trash("expunged"));
  const TrashListing listing = listed();
  fs::remove_all(trash("expunged/1"));
  fs::remove(trash("expunged/2"));
  disk_->tree.plant("home/data/Trash/expunged", "1/\n  kept\n2\n4/\n  kept\n");
  EXPECT_EQ(empty(listing), 0);
  EXPECT_THAT(entriesOf(trash("expunged")), ElementsAre("1", "2", "4"));
  EXPECT_TRUE(isThere(trash("expunged/1/kept")));
}

TEST_F(EmptyingMeanwhile, nothing_is_deleted_through_links_that_replace_listed_items) {
  const char* items = "film\nfolder/\n  film\n";
  plantItems(items);
  disk_->tree.plant("home/data/Trash", "expunged/\n  1/\n    film\n");
  record("gone");
  const TrashListing listing = listed();
  for (const char* part : {"files", "info", "expunged"}) {
    fs::rename(trash(part), disk_->at(part));
    fs::create_directory_symlink(disk_->at(part), trash(part));
  }
  EXPECT_EQ(empty(listing), 0);
  EXPECT_TRUE(isThere(disk_->at("files/film")));
  EXPECT_TRUE(isThere(disk_->at("files/folder/film")));
  EXPECT_TRUE(isThere(disk_->at("expunged/1/film")));
  EXPECT_THAT(entriesOf(disk_->at("info")),
              ElementsAre("film.trashinfo", "folder.trashinfo", "gone.trashinfo"));
}

// Another program moves the folder away that is about to be deleted, and the user's home to its
// place.
TEST_F(EmptyingMeanwhile, a_folder_that_replaces_a_listed_one_at_any_moment_stays_complete) {
  const std::string obstacle = SystemCallTrace::obstacle();
  if (!obstacle.empty()) GTEST_SKIP() << obstacle;
  std::size_t stop = 1;
  std::size_t swaps = 0;
  for (;; ++stop) {
    disk_ = std::make_unique<TrashOnDisk>();
    disk_->tree.plant("here", "kept/\n  deeper/\n    film 4K\n  film 4K\n");
    plantItems("folder/\n  deeper/\n    film\n");
    const TrashListing listing = listed();
    const auto swap = [&] {
      std::error_code none;
      fs::rename(trash("files/folder"), disk_->at("away"), none);
      if (!none) ++swaps;
      fs::rename(disk_->at("kept"), trash("files/folder"));
    };
    const TracedRun run = SystemCallTrace::interruptedAt(stop, swap, [&]() -> std::string {
      EmptiedTrash result;
      emptyTrashFolder(listing, geteuid(), result);
      return "";
    });
    if (!run.wasInterrupted) break;
    ASSERT_EQ(run.end, TracedRun::End::finished) << run.told;
    ASSERT_EQ(disk_->files().size(), 1U) << "stop " << stop;
    const std::string kept = "home/data/Trash/files/" + disk_->files().front();
    ASSERT_EQ(disk_->tree.length(kept + "/film"), 4096) << "stop " << stop;
    ASSERT_EQ(disk_->tree.length(kept + "/deeper/film"), 4096) << "stop " << stop;
    ASSERT_FALSE(isThere(trash("expunged"))) << "stop " << stop;
  }
  EXPECT_GT(swaps, 20U);
  EXPECT_LT(swaps, stop - 1);
}

TEST_F(EmptyingMeanwhile, a_folder_is_deleted_even_if_another_emptying_removes_its_destination) {
  const std::string obstacle = SystemCallTrace::obstacle();
  if (!obstacle.empty()) GTEST_SKIP() << obstacle;
  std::size_t removals = 0;
  for (std::size_t stop = 1;; ++stop) {
    disk_ = std::make_unique<TrashOnDisk>();
    plantItems("folder/\n  film\n");
    const TrashListing listing = listed();
    const auto removePlace = [&] {
      if (::rmdir(trash("expunged").c_str()) == 0) ++removals;
    };
    const TracedRun run = SystemCallTrace::interruptedAt(stop, removePlace, [&] {
      EmptiedTrash result;
      emptyTrashFolder(listing, geteuid(), result);
      return std::to_string(result.deleted) + told(result);
    });
    EXPECT_EQ(run.told, "1") << "stop " << stop;
    EXPECT_THAT(disk_->files(), IsEmpty()) << "stop " << stop;
    EXPECT_FALSE(isThere(trash("expunged"))) << "stop " << stop;
    if (!run.wasInterrupted) break;
  }
  EXPECT_GT(removals, 3U);
}

TEST_F(EmptyingMeanwhile, two_emptyings_at_the_same_time_count_each_item_once) {
  plantItems("folder###/ x300\n  deeper/\n    film\n  film\nfilm### x300\n");
  disk_->tree.plant("home/data/Trash", "expunged/\n  remains###/ x50\n    film\n");
  const TrashConfig config = disk_->configWith({});
  std::array<EmptiedTrash, 2> emptied;
  std::vector<std::thread> threads;
  threads.reserve(emptied.size());
  for (EmptiedTrash& result : emptied) {
    threads.emplace_back([&] { result = UserTrashCan(config, anHourLater).empty(); });
  }
  for (std::thread& thread : threads) thread.join();
  for (const EmptiedTrash& result : emptied) EXPECT_EQ(told(result), "");
  EXPECT_EQ(emptied[0].deleted + emptied[1].deleted, 600);
  EXPECT_THAT(disk_->files(), IsEmpty());
  EXPECT_THAT(disk_->infos(), IsEmpty());
  EXPECT_FALSE(isThere(trash("expunged")));
}

}  // namespace
}  // namespace tessaly
