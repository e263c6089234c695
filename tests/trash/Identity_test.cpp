// Only the item that was moved comes back from the Trash, and not another one that has its name by
// now.
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/trash/ItemFacts.h"
#include "support/Needs.h"
#include "support/PlainFiles.h"
#include "support/PrivateMounts.h"
#include "trash/TrashOnDisk.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using Kind = SystemError::Kind;

// "" if it was refused because another item has the name, else what happened.
std::string toldUnlessStale(const Outcome& back) {
  if (back) return "it came back";
  return back.error().kind == Kind::stale ? "" : told(back);
}

void giveTimesOf(const std::string& path, const std::string& to) {
  struct stat status {};
  ASSERT_EQ(lstat(path.c_str(), &status), 0);
  const timespec times[2] = {status.st_atim, status.st_mtim};
  ASSERT_EQ(utimensat(AT_FDCWD, to.c_str(), times, AT_SYMLINK_NOFOLLOW), 0);
}

class IdentityOnDisk : public testing::Test {
 protected:
  ItemInTrash trash(const std::string& path) {
    const Result<ItemInTrash> moved = disk_.mover().moveToTrash(path);
    EXPECT_TRUE(moved) << told(moved);
    return moved ? moved.value() : ItemInTrash();
  }
  std::string putBack(const ItemInTrash& item, const std::string& path) {
    return toldUnlessStale(disk_.mover().putBack(item, path));
  }
  bool inodesLast() const {
    const FileDescriptor folder(open(disk_.tree.path().c_str(), O_PATH | O_CLOEXEC));
    const Result<bool> last = inodesLastAt(folder, "");
    return last && last.value();
  }

  TrashOnDisk disk_;
};

TEST_F(IdentityOnDisk, a_second_item_of_the_name_stays_with_its_record) {
  disk_.put(disk_.at("notes.txt"), "first");
  const ItemInTrash first = trash(disk_.at("notes.txt"));
  disk_.put(disk_.at("notes.txt"), "the second");
  TrashOnDisk::takeOut(first.path);
  const ItemInTrash second = trash(disk_.at("notes.txt"));
  ASSERT_EQ(second.path, first.path);
  EXPECT_EQ(putBack(first, disk_.at("notes.txt")), "");
  EXPECT_FALSE(isThere(disk_.at("notes.txt")));
  EXPECT_EQ(contentOf(second.path), "the second");
  EXPECT_EQ(recordedPath(second.path), disk_.at("notes.txt"));
  EXPECT_THAT(disk_.files(), ElementsAre("notes.txt"));
  EXPECT_THAT(disk_.infos(), ElementsAre("notes.txt.trashinfo"));
}

TEST_F(IdentityOnDisk, a_copy_is_not_the_item) {
  if (!inodesLast()) GTEST_SKIP() << needs(Need::lastingInodes, "the folder of the tests has none");
  disk_.put(disk_.at("film"), "content");
  const ItemInTrash item = trash(disk_.at("film"));
  const std::string copy = disk_.homeTrash() + "/files/copy";
  fs::copy_file(item.path, copy);
  giveTimesOf(item.path, copy);
  fs::rename(copy, item.path);
  EXPECT_EQ(putBack(item, disk_.at("film")), "");
  EXPECT_EQ(contentOf(item.path), "content");
  EXPECT_EQ(recordedPath(item.path), disk_.at("film"));
}

TEST_F(IdentityOnDisk, an_item_of_another_type_is_not_the_item) {
  disk_.put(disk_.at("film"), "content");
  const ItemInTrash item = trash(disk_.at("film"));
  fs::remove(item.path);
  fs::create_symlink("nowhere", item.path);
  EXPECT_EQ(putBack(item, disk_.at("film")), "");
  fs::remove(item.path);
  fs::create_directory(item.path);
  EXPECT_EQ(putBack(item, disk_.at("film")), "");
  EXPECT_FALSE(isThere(disk_.at("film")));
}

TEST_F(IdentityOnDisk, an_item_that_was_moved_twice_comes_back_by_the_last_result) {
  disk_.put(disk_.at("film"), "content");
  const ItemInTrash first = trash(disk_.at("film"));
  EXPECT_EQ(told(disk_.mover().putBack(first, disk_.at("film"))), "");
  const ItemInTrash second = trash(disk_.at("film"));
  EXPECT_EQ(told(disk_.mover().putBack(second, disk_.at("film"))), "");
  EXPECT_EQ(contentOf(disk_.at("film")), "content");
}

// Another Trash at the same path, like that of another disk: the inode is in both.
TEST_F(IdentityOnDisk, an_item_in_another_trash_is_not_the_item) {
  if (!inodesLast()) GTEST_SKIP() << needs(Need::lastingInodes, "the folder of the tests has none");
  disk_.put(disk_.at("film"), "content");
  const ItemInTrash item = trash(disk_.at("film"));
  fs::rename(disk_.homeTrash(), disk_.homeTrash() + "-before");
  fs::create_directories(disk_.homeTrash() + "/files");
  fs::create_directories(disk_.homeTrash() + "/info");
  fs::create_hard_link(disk_.homeTrash() + "-before/files/film", item.path);
  EXPECT_EQ(putBack(item, disk_.at("film")), "");
  EXPECT_FALSE(isThere(disk_.at("film")));
  EXPECT_EQ(contentOf(item.path), "content");
  TrashOnDisk::remove(disk_.homeTrash());
  fs::rename(disk_.homeTrash() + "-before", disk_.homeTrash());
  EXPECT_EQ(told(disk_.mover().putBack(item, disk_.at("film"))), "");
}

TEST_F(IdentityOnDisk, a_trash_that_became_a_link_gives_nothing_back) {
  disk_.put(disk_.at("film"), "content");
  const ItemInTrash item = trash(disk_.at("film"));
  fs::rename(disk_.homeTrash(), disk_.homeTrash() + "-before");
  fs::create_directory_symlink("Trash-before", disk_.homeTrash());
  const Outcome back = disk_.mover().putBack(item, disk_.at("film"));
  ASSERT_FALSE(back);
  EXPECT_EQ(back.error().kind, Kind::linkOnTheWay);
  EXPECT_FALSE(isThere(disk_.at("film")));
  EXPECT_TRUE(isThere(disk_.homeTrash() + "-before/files/film"));
}

TEST_F(IdentityOnDisk, a_record_of_another_item_stays_when_the_item_is_put_back) {
  disk_.put(disk_.at("film"), "content");
  const ItemInTrash item = trash(disk_.at("film"));
  putFile(infoPathOf(item.path), "[Trash Info]\nPath=elsewhere/film\n");
  const Outcome back = disk_.mover().putBack(item, disk_.at("film"));
  EXPECT_EQ(isThere(infoPathOf(item.path)), true) << told(back);
  EXPECT_EQ(recordedPath(item.path), "elsewhere/film");
}

// File systems without lasting inode numbers, mounted in a child process's namespace.
struct Mounted {
  const char* name;
  Need need;
  const char* command;  // mounts a file system on "volume", from files beside that folder

  friend void PrintTo(const Mounted& one, std::ostream* out) { *out << one.name; }
};

class NumberlessVolume : public testing::TestWithParam<Mounted> {
 protected:
  using Body = std::function<std::string()>;

  NumberlessVolume() {
    disk_.tree.plant("volume/\nback/\n  work/\n  upper/\n  lower/\ndisk sparse=64M\n");
  }

  void expect(const Body& body) {
    const std::string command =
        "cd '" + disk_.tree.path() + "' && { " + GetParam().command + "; } >&2";
    const std::string told = inPrivateMounts([&]() -> std::string {
      if (std::system(command.c_str()) != 0) return "refused: " + needs(GetParam().need, command);
      const FileDescriptor top(open(volume().c_str(), O_PATH | O_CLOEXEC));
      const Result<bool> last = inodesLastAt(top, "");
      std::string outcome = !last || last.value() ? "numbers are taken to last here" : body();
      // A program that serves the file system ends with the mount.
      ::umount2(volume().c_str(), MNT_DETACH);
      return outcome;
    });
    if (told.starts_with("refused")) GTEST_SKIP() << "no mounting here, " << told;
    EXPECT_EQ(told, "");
  }

  std::string volume() const { return disk_.tree.at("volume"); }
  std::string on(const std::string& below) const { return volume() + "/" + below; }

  TrashOnDisk disk_;
};
INSTANTIATE_TEST_SUITE_P(
    Mounted, NumberlessVolume,
    testing::Values(
        Mounted{"vfat", Need::vfat, "mkfs.vfat disk && mount -o loop disk volume"},
        Mounted{"fuse", Need::bindfs, "bindfs back volume"},
        Mounted{"overlay", Need::overlay,
                "mount -t overlay -o lowerdir=back/lower,upperdir=back/upper,workdir=back/work "
                "overlay volume"}),
    [](const auto& test) { return std::string(test.param.name); });

TEST_P(NumberlessVolume, files_and_folders_come_back_without_lasting_inodes) {
  expect([&]() -> std::string {
    disk_.put(on("notes.txt"), "notes");
    disk_.put(on("folder/film"), "film");
    for (const char* name : {"notes.txt", "folder"}) {
      const Result<ItemInTrash> moved = disk_.mover().moveToTrash(on(name));
      if (!moved) return told(moved);
      if (isThere(on(name))) return "it is still there";
      const Outcome back = disk_.mover().putBack(moved.value(), on(name));
      if (!back) return told(back);
      if (isThere(moved.value().path) || isThere(infoPathOf(moved.value().path))) {
        return "something is left in the Trash";
      }
    }
    const bool isWhole =
        contentOf(on("notes.txt")) == "notes" && contentOf(on("folder/film")) == "film";
    return isWhole ? "" : "it came back damaged";
  });
}

TEST_P(NumberlessVolume, a_second_item_of_the_name_does_not_come_back_without_lasting_inodes) {
  expect([&]() -> std::string {
    disk_.put(on("notes.txt"), "first");
    disk_.put(on("elsewhere/notes.txt"), "other");
    const Result<ItemInTrash> first = disk_.mover().moveToTrash(on("notes.txt"));
    if (!first) return told(first);
    TrashOnDisk::takeOut(first.value().path);
    const Result<ItemInTrash> second = disk_.mover().moveToTrash(on("elsewhere/notes.txt"));
    if (!second || second.value().path != first.value().path)
      return "another name: " + told(second);
    std::string refused = toldUnlessStale(disk_.mover().putBack(first.value(), on("notes.txt")));
    if (!refused.empty()) return refused;
    if (contentOf(second.value().path) != "other") return "the second item is gone";
    if (recordedPath(second.value().path) != "elsewhere/notes.txt") return "its record is gone";
    return told(disk_.mover().putBack(second.value(), on("elsewhere/notes.txt")));
  });
}

// With the same type, size and time, the record decides.
TEST_P(NumberlessVolume, records_distinguish_items_without_lasting_inodes) {
  expect([&]() -> std::string {
    disk_.put(on("notes.txt"), "notes");
    const Result<ItemInTrash> moved = disk_.mover().moveToTrash(on("notes.txt"));
    if (!moved) return told(moved);
    const std::string info = infoPathOf(moved.value().path);
    const std::string record = contentOf(info);
    putFile(info, record + "X=other\n");
    std::string refused = toldUnlessStale(disk_.mover().putBack(moved.value(), on("notes.txt")));
    if (!refused.empty()) return "another record: " + refused;
    fs::remove(info);
    refused = toldUnlessStale(disk_.mover().putBack(moved.value(), on("notes.txt")));
    if (!refused.empty()) return "no record: " + refused;
    if (contentOf(moved.value().path) != "notes") return "it is gone";
    putFile(info, record);
    return told(disk_.mover().putBack(moved.value(), on("notes.txt")));
  });
}

TEST_P(NumberlessVolume, changed_items_do_not_come_back_without_lasting_inodes) {
  expect([&]() -> std::string {
    disk_.put(on("notes.txt"), "notes");
    const Result<ItemInTrash> moved = disk_.mover().moveToTrash(on("notes.txt"));
    if (!moved) return told(moved);
    std::ofstream(moved.value().path, std::ios::app) << "more";
    return toldUnlessStale(disk_.mover().putBack(moved.value(), on("notes.txt")));
  });
}

}  // namespace
}  // namespace tessaly
