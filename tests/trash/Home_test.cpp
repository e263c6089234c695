// Items on the file system of the home Trash.
#include <algorithm>
#include <cerrno>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>

#include "platform/linux/trash/MoveItem.h"
#include "support/ForkedChild.h"
#include "support/Needs.h"
#include "support/PlainFiles.h"
#include "support/SystemCallTrace.h"
#include "support/TrashCanContract.h"
#include "support/TrashContract.h"
#include "trash/TrashOnDisk.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using Kind = SystemError::Kind;

INSTANTIATE_TYPED_TEST_SUITE_P(Home, TrashContract, TrashOnDisk);
INSTANTIATE_TYPED_TEST_SUITE_P(Home, TrashCanContract, TrashOnDisk);

class HomeTrash : public testing::Test {
 protected:
  ItemInTrash trashItem(const std::string& path) {
    const Result<ItemInTrash> moved = disk_.mover().moveToTrash(path);
    EXPECT_TRUE(moved) << told(moved);
    return moved ? moved.value() : ItemInTrash();
  }
  std::string trash(const std::string& path) { return trashItem(path).path; }
  SystemError refusalOf(const std::string& path) {
    const Result<ItemInTrash> moved = disk_.mover().moveToTrash(path);
    EXPECT_FALSE(moved) << path;
    return moved ? SystemError() : moved.error();
  }
  SystemError refusalOf(const ItemInTrash& item, const std::string& original) {
    const Outcome back = disk_.mover().putBack(item, original);
    EXPECT_FALSE(back) << original;
    return back ? SystemError() : back.error();
  }

  TrashOnDisk disk_;
};

TEST_F(HomeTrash, the_home_trash_is_created_for_the_user_alone) {
  const mode_t before = umask(0);
  disk_.put(disk_.at("film"), "x");
  const std::string place = trash(disk_.at("film"));
  umask(before);
  EXPECT_EQ(place, disk_.homeTrash() + "/files/film");
  for (const char* below : {"", "/files", "/info"}) {
    EXPECT_EQ(permissionsOf(disk_.homeTrash() + below), 0700U) << below;
  }
  EXPECT_EQ(permissionsOf(infoPathOf(place)), 0600U);
}

TEST_F(HomeTrash, a_record_has_the_path_of_the_item_and_the_time_of_the_move) {
  disk_.put(disk_.at("a b%/film\xff\n"), "x");
  const std::time_t before = std::time(nullptr);
  const std::string place = trash(disk_.at("a b%/film\xff\n"));
  const std::time_t after = std::time(nullptr);
  EXPECT_EQ(recordedPath(place), disk_.at("a b%/film\xff\n"));
  const std::string info = contentOf(infoPathOf(place));
  const std::string key = "\nDeletionDate=";
  const std::size_t start = info.find(key) + key.size();
  std::tm parsed{};
  parsed.tm_isdst = -1;
  const char* rest = ::strptime(info.c_str() + start, "%Y-%m-%dT%H:%M:%S", &parsed);
  ASSERT_NE(rest, nullptr) << info;
  EXPECT_STREQ(rest, "\n");
  const std::time_t deleted = std::mktime(&parsed);
  EXPECT_LE(before, deleted);
  EXPECT_LE(deleted, after);
}

TEST_F(HomeTrash, the_home_trash_is_empty_after_everything_was_put_back) {
  for (const char* name : {"a", "b", "folder/x"}) disk_.put(disk_.at(name), name);
  for (const char* name : {"a", "b", "folder"}) {
    const ItemInTrash item = trashItem(disk_.at(name));
    EXPECT_EQ(told(disk_.mover().putBack(item, disk_.at(name))), "");
  }
  EXPECT_THAT(disk_.files(), IsEmpty());
  EXPECT_THAT(disk_.infos(), IsEmpty());
}

TEST_F(HomeTrash, links_move_without_their_targets) {
  disk_.tree.plant("here", R"(
    folder/
      film 4K
    file 4K
    toFolder -> folder
    toFile -> file
    broken -> nowhere
    loop -> loop
  )");
  for (const std::string name : {"toFolder", "toFile", "broken", "loop", "toFolder/"}) {
    const std::string link = disk_.at(name.substr(0, name.find('/')));
    const fs::path target = fs::read_symlink(link);
    const ItemInTrash item = trashItem(disk_.at(name));
    EXPECT_FALSE(isThere(link)) << name;
    EXPECT_EQ(fs::read_symlink(item.path), target);
    EXPECT_EQ(recordedPath(item.path), link);
    EXPECT_EQ(told(disk_.mover().putBack(item, disk_.at(name))), "");
    EXPECT_EQ(fs::read_symlink(link), target);
  }
  EXPECT_TRUE(isThere(disk_.at("folder/film")));
  EXPECT_TRUE(isThere(disk_.at("file")));
}

TEST_F(HomeTrash, names_are_skipped_if_another_program_has_taken_half_of_the_pair) {
  disk_.put(disk_.homeTrash() + "/info/film.trashinfo", "orphan");
  disk_.put(disk_.homeTrash() + "/files/film.2", "orphan");
  disk_.put(disk_.at("film"), "x");
  EXPECT_EQ(trash(disk_.at("film")), disk_.homeTrash() + "/files/film.3");
  EXPECT_THAT(disk_.files(), ElementsAre("film.2", "film.3"));
  EXPECT_THAT(disk_.infos(), ElementsAre("film.3.trashinfo", "film.trashinfo"));
  EXPECT_EQ(contentOf(disk_.homeTrash() + "/info/film.trashinfo"), "orphan");
}

TEST_F(HomeTrash, long_names_are_shortened_and_recorded_completely) {
  const std::vector<std::string> names = {std::string(255, 'n'), std::string(255, '\xff'),
                                          std::string(251, 'n') + ".mkv"};
  for (const std::string& name : names) {
    for (int round = 0; round < 2; ++round) {
      disk_.put(disk_.at(name), "x");
      const std::string place = trash(disk_.at(name));
      EXPECT_LE(fs::path(infoPathOf(place)).filename().string().size(), 255U);
      EXPECT_EQ(recordedPath(place), disk_.at(name));
    }
  }
  EXPECT_EQ(disk_.files().size(), 6U);
}

TEST_F(HomeTrash, a_large_folder_needs_as_many_calls_as_an_empty_one) {
  if (const std::string obstacle = SystemCallTrace::obstacle(); !obstacle.empty()) {
    GTEST_SKIP() << obstacle;
  }
  disk_.tree.plant("here", "first/\nmany/\n  part##### x50000\nnone/\n");
  const auto callsFor = [&](const char* name) {
    const TracedRun run =
        SystemCallTrace::of([&] { return told(disk_.mover().moveToTrash(disk_.at(name))); });
    EXPECT_EQ(run.told, "");
    return run.calls.size();
  };
  callsFor("first");
  EXPECT_EQ(callsFor("many"), callsFor("none"));
  EXPECT_EQ(TrashOnDisk::namesIn(disk_.homeTrash() + "/files/many").size(), 50000U);
  const ItemInTrash many = knownInTrash(disk_.homeTrash() + "/files/many");
  EXPECT_EQ(told(disk_.mover().putBack(many, disk_.at("many"))), "");
  EXPECT_EQ(TrashOnDisk::namesIn(disk_.at("many")).size(), 50000U);
}

TEST_F(HomeTrash, pipes_and_hard_links_move) {
  disk_.tree.plant("here", "pipe fifo\nfile 4K\ntwin = here/file\n");
  for (const char* name : {"pipe", "twin"}) trash(disk_.at(name));
  EXPECT_TRUE(isThere(disk_.at("file")));
  EXPECT_THAT(disk_.files(), ElementsAre("pipe", "twin"));
}

TEST_F(HomeTrash, the_trash_and_folders_above_and_in_it_do_not_move) {
  disk_.put(disk_.at("film"), "x");
  trash(disk_.at("film"));
  for (const std::string& path :
       {disk_.tree.at("home"), disk_.tree.at("home/data"), disk_.homeTrash(),
        disk_.homeTrash() + "/", disk_.homeTrash() + "/files", disk_.homeTrash() + "/info",
        disk_.homeTrash() + "/info/film.trashinfo", disk_.homeTrash() + "/files/film"}) {
    EXPECT_EQ(refusalOf(path).code, EINVAL) << path;
  }
  EXPECT_THAT(disk_.files(), ElementsAre("film"));
  EXPECT_THAT(disk_.infos(), ElementsAre("film.trashinfo"));
}

TEST_F(HomeTrash, the_home_trash_may_be_a_link_of_the_user) {
  disk_.put(disk_.at("film"), "x");
  fs::create_directories(disk_.tree.at("home/data"));
  fs::create_directory(disk_.tree.at("elsewhere"));
  fs::create_directory_symlink("../../elsewhere", disk_.homeTrash());
  const ItemInTrash item = trashItem(disk_.at("film"));
  EXPECT_EQ(item.path, disk_.tree.at("elsewhere/files/film"));
  EXPECT_TRUE(isThere(item.path));
  EXPECT_EQ(told(disk_.mover().putBack(item, disk_.at("film"))), "");
  EXPECT_THAT(TrashOnDisk::namesIn(disk_.tree.at("elsewhere/info")), IsEmpty());
}

TEST_F(HomeTrash, nothing_moves_if_the_trash_is_no_folder_or_its_folders_are_links) {
  disk_.put(disk_.at("film"), "x");
  disk_.put(disk_.homeTrash(), "a file");
  EXPECT_EQ(refusalOf(disk_.at("film")).kind, Kind::notADirectory);
  TrashOnDisk::remove(disk_.homeTrash());
  fs::create_directories(disk_.homeTrash());
  fs::create_directory(disk_.tree.at("elsewhere"));
  for (const char* name : {"files", "info"}) {
    fs::create_directory_symlink("../../../elsewhere", disk_.homeTrash() + "/" + name);
    EXPECT_EQ(refusalOf(disk_.at("film")).kind, Kind::notADirectory);
    fs::remove(disk_.homeTrash() + "/" + name);
  }
  EXPECT_TRUE(isThere(disk_.at("film")));
  EXPECT_THAT(TrashOnDisk::namesIn(disk_.tree.at("elsewhere")), IsEmpty());
}

TEST_F(HomeTrash, nothing_moves_out_of_a_read_only_folder) {
  disk_.tree.plant("here", "locked/ mode=0555\n  film 4K\n");
  ASSERT_EQ(chmod(disk_.tree.path().c_str(), 0777), 0);
  ASSERT_EQ(chmod(disk_.tree.at("home").c_str(), 0777), 0);
  EXPECT_EQ(asOtherUser([&]() -> std::string {
              UserTrashMover mover(disk_.config());
              const Result<ItemInTrash> moved = mover.moveToTrash(disk_.at("locked/film"));
              if (moved) return "moved";
              if (moved.error().kind != Kind::notPermitted) return told(moved);
              return disk_.infos().empty() && disk_.files().empty() ? "" : "something was left";
            }),
            "");
  EXPECT_TRUE(isThere(disk_.at("locked/film")));
}

// Like any folder that the user creates.
TEST_F(HomeTrash, putting_back_creates_missing_folders_with_default_permissions) {
  for (const mode_t mask : {mode_t{022}, mode_t{027}, mode_t{077}, mode_t{0}}) {
    disk_.put(disk_.at("gone/deeper/film"), "x");
    const ItemInTrash film = trashItem(disk_.at("gone/deeper/film"));
    fs::remove_all(disk_.at("gone"));
    const mode_t before = ::umask(mask);
    const std::string back = told(disk_.mover().putBack(film, disk_.at("gone/deeper/film")));
    ::umask(before);
    EXPECT_EQ(back, "");
    EXPECT_EQ(permissionsOf(disk_.at("gone")), 0777U & ~mask);
    EXPECT_EQ(permissionsOf(disk_.at("gone/deeper")), 0777U & ~mask);
    fs::remove_all(disk_.at("gone"));
  }
}

TEST_F(HomeTrash, items_of_others_do_not_move_out_of_a_sticky_folder) {
  if (getuid() != 0) GTEST_SKIP() << needs(Need::root, "only root has items of others");
  disk_.tree.plant("here", "sticky/ mode=01777\n  film 4K\n");
  ASSERT_EQ(chmod(disk_.tree.path().c_str(), 0777), 0);
  ASSERT_EQ(chmod(disk_.tree.at("home").c_str(), 0777), 0);
  EXPECT_EQ(asOtherUser([&]() -> std::string {
              UserTrashMover mover(disk_.config());
              const Result<ItemInTrash> moved = mover.moveToTrash(disk_.at("sticky/film"));
              if (moved) return "moved";
              if (moved.error().kind != Kind::notPermitted) return told(moved);
              return disk_.infos().empty() ? "" : "an info was left";
            }),
            "");
  EXPECT_TRUE(isThere(disk_.at("sticky/film")));
}

TEST_F(HomeTrash, putting_back_replaces_nothing) {
  disk_.tree.plant("here", "target\n");
  disk_.put(disk_.at("film"), "x");
  const ItemInTrash film = trashItem(disk_.at("film"));
  fs::create_symlink("nowhere", disk_.at("film"));
  EXPECT_EQ(refusalOf(film, disk_.at("film")).kind, Kind::alreadyExists);
  EXPECT_TRUE(fs::is_symlink(disk_.at("film")));
  fs::remove(disk_.at("film"));
  disk_.put(disk_.at("folder/x"), "x");
  const ItemInTrash folder = trashItem(disk_.at("folder"));
  fs::create_directory(disk_.at("folder"));
  EXPECT_EQ(refusalOf(folder, disk_.at("folder")).kind, Kind::alreadyExists);
  EXPECT_THAT(TrashOnDisk::namesIn(disk_.at("folder")), IsEmpty());
  EXPECT_THAT(disk_.files(), ElementsAre("film", "folder"));
  EXPECT_THAT(disk_.infos(), ElementsAre("film.trashinfo", "folder.trashinfo"));
  // A second hard link is an item of its own, although both are one file.
  fs::create_hard_link(film.path, disk_.at("film"));
  EXPECT_EQ(refusalOf(film, disk_.at("film")).kind, Kind::alreadyExists);
  EXPECT_TRUE(isThere(film.path));
}

// An item that appears at the original path at the last moment is safe: no call could replace it.
TEST_F(HomeTrash, no_call_of_a_move_could_replace_an_item) {
  if (const std::string obstacle = SystemCallTrace::obstacle(); !obstacle.empty()) {
    GTEST_SKIP() << obstacle;
  }
  disk_.put(disk_.at("film"), "x");
  const TracedRun away =
      SystemCallTrace::of([&] { return told(disk_.mover().moveToTrash(disk_.at("film"))); });
  EXPECT_EQ(away.told, "");
  const ItemInTrash item = knownInTrash(disk_.homeTrash() + "/files/film");
  const TracedRun back =
      SystemCallTrace::of([&] { return told(disk_.mover().putBack(item, disk_.at("film"))); });
  EXPECT_EQ(back.told, "");
  for (const TracedRun* run : {&away, &back}) {
    EXPECT_EQ(std::count(run->calls.begin(), run->calls.end(), SYS_renameat2), 1);
    EXPECT_EQ(std::count(run->calls.begin(), run->calls.end(), SYS_renameat), 0);
  }
}

// A power cut has the effect of a kill: the record is on disk before the item moves, and is deleted
// after the item is back.
TEST_F(HomeTrash, each_step_is_on_disk_before_the_next) {
  if (const std::string obstacle = SystemCallTrace::obstacle(); !obstacle.empty()) {
    GTEST_SKIP() << obstacle;
  }
  disk_.put(disk_.at("first"), "x");
  trash(disk_.at("first"));
  disk_.put(disk_.at("film"), "x");
  const auto order = [](const TracedRun& run) {
    std::string told;
    for (const long call : run.calls) {
      if (call == SYS_write) told += "write ";
      if (call == SYS_fsync) told += "sync ";
      if (call == SYS_renameat2) told += "move ";
      if (call == SYS_unlinkat) told += "remove ";
    }
    return told;
  };
  const TracedRun away =
      SystemCallTrace::of([&] { return told(disk_.mover().moveToTrash(disk_.at("film"))); });
  EXPECT_EQ(away.told, "");
  EXPECT_EQ(order(away), "write sync sync move sync sync ");
  const ItemInTrash item = knownInTrash(disk_.homeTrash() + "/files/film");
  const TracedRun back =
      SystemCallTrace::of([&] { return told(disk_.mover().putBack(item, disk_.at("film"))); });
  EXPECT_EQ(back.told, "");
  EXPECT_EQ(order(back), "move sync sync remove sync ");
}

TEST_F(HomeTrash, putting_back_fails_if_a_file_is_in_the_place_of_a_folder) {
  disk_.put(disk_.at("a/b/film"), "x");
  const ItemInTrash item = trashItem(disk_.at("a/b/film"));
  TrashOnDisk::remove(disk_.at("a"));
  disk_.put(disk_.at("a"), "in the way");
  EXPECT_EQ(refusalOf(item, disk_.at("a/b/film")).kind, Kind::notADirectory);
  EXPECT_EQ(contentOf(disk_.at("a")), "in the way");
  EXPECT_TRUE(isThere(item.path));
  EXPECT_TRUE(isThere(infoPathOf(item.path)));
}

// The error is that of a remote file system, or that of a system without the operation.
class MisreportedMove : public HomeTrash, public testing::WithParamInterface<int> {
 protected:
  void SetUp() override {
    const std::string obstacle = SystemCallTrace::obstacle();
    if (!obstacle.empty()) GTEST_SKIP() << obstacle;
  }
  static TracedRun misreported(const std::function<std::string()>& body) {
    return SystemCallTrace::misreportingNth(SYS_renameat2, 1, GetParam(), body);
  }
};
INSTANTIATE_TEST_SUITE_P(Codes, MisreportedMove, testing::Values(EIO, EINVAL));

TEST_P(MisreportedMove, an_item_that_moved_despite_the_reported_error_is_in_the_trash) {
  disk_.put(disk_.at("film"), "x");
  const TracedRun run =
      misreported([&] { return told(disk_.mover().moveToTrash(disk_.at("film"))); });
  EXPECT_EQ(run.failedCall, SYS_renameat2);
  EXPECT_EQ(run.told, "");
  EXPECT_FALSE(isThere(disk_.at("film")));
  const std::string place = disk_.homeTrash() + "/files/film";
  EXPECT_EQ(contentOf(place), "x");
  EXPECT_EQ(recordedPath(place), disk_.at("film"));
}

TEST_P(MisreportedMove, an_item_that_came_back_despite_the_reported_error_leaves_no_record) {
  disk_.put(disk_.at("film"), "x");
  const ItemInTrash item = trashItem(disk_.at("film"));
  const TracedRun run =
      misreported([&] { return told(disk_.mover().putBack(item, disk_.at("film"))); });
  EXPECT_EQ(run.failedCall, SYS_renameat2);
  EXPECT_EQ(run.told, "");
  EXPECT_EQ(contentOf(disk_.at("film")), "x");
  EXPECT_THAT(disk_.files(), IsEmpty());
  EXPECT_FALSE(isThere(infoPathOf(item.path)));
}

TEST_F(HomeTrash, a_move_succeeds_whose_call_moved_the_item_but_reported_an_error) {
  disk_.put(disk_.at("old/film"), "x");
  fs::create_directory(disk_.at("new"));
  const std::string name = "film";
  const FileDescriptor from(open(disk_.at("old").c_str(), O_PATH | O_DIRECTORY));
  const FileDescriptor to(open(disk_.at("new").c_str(), O_PATH | O_DIRECTORY));
  const Result<ItemIdentity> item = identityOf(from, name, "");
  ASSERT_TRUE(item);
  const auto moved = [&] { return hasMoved({from, name}, {to, name}, item.value()); };
  EXPECT_FALSE(moved());
  fs::create_hard_link(disk_.at("old/film"), disk_.at("new/film"));
  EXPECT_FALSE(moved());
  fs::remove(disk_.at("old/film"));
  EXPECT_TRUE(moved());
  fs::remove(disk_.at("new/film"));
  EXPECT_FALSE(moved());
  disk_.put(disk_.at("other"), "x");
  fs::rename(disk_.at("other"), disk_.at("new/film"));
  disk_.put(disk_.at("more"), "x");
  fs::rename(disk_.at("more"), disk_.at("new/film"));
  EXPECT_FALSE(moved());
}

}  // namespace
}  // namespace tessaly
