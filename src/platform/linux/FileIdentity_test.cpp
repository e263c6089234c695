#include "platform/FileIdentity.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <vector>

#include "platform/linux/IdentityFromStatus.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

// Sets the old time of modification until the system records another time of that change.
void waitForAnotherTime(const std::string& path) {
  struct stat before {};
  ASSERT_EQ(::stat(path.c_str(), &before), 0);
  struct stat now = before;
  while (now.st_ctim.tv_sec == before.st_ctim.tv_sec &&
         now.st_ctim.tv_nsec == before.st_ctim.tv_nsec) {
    const struct timespec times[] = {before.st_atim, before.st_mtim};
    ASSERT_EQ(::utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
    ASSERT_EQ(::stat(path.c_str(), &now), 0);
  }
}

TEST(FileIdentity, it_is_the_same_whether_the_path_or_a_status_is_examined) {
  const TempTree tree("file 4K mtime=1700000000.25\nfolder/\nlink -> file\npipe fifo\n");
  const std::vector<std::pair<const char*, FileIdentity::Kind>> items = {
      {"file", FileIdentity::Kind::file},
      {"folder", FileIdentity::Kind::folder},
      {"link", FileIdentity::Kind::link},
      {"pipe", FileIdentity::Kind::other}};
  for (const auto& [name, kind] : items) {
    struct stat status {};
    ASSERT_EQ(::lstat(tree.at(name).c_str(), &status), 0);
    const Result<FileIdentity> identity = FileIdentity::of(tree.at(name));
    ASSERT_TRUE(identity.ok()) << name;
    EXPECT_EQ(identity.value(), identityFrom(status)) << name;
    EXPECT_EQ(identity.value().kind, kind) << name;
  }
  const FileIdentity file = FileIdentity::of(tree.at("file")).value();
  EXPECT_EQ(file.size, 4096);
  EXPECT_EQ(file.modifiedSeconds, 1700000000);
  EXPECT_EQ(file.modifiedNanoseconds, 250000000);
}

TEST(FileIdentity, an_item_has_the_time_of_its_creation_if_the_file_system_records_it) {
  const TempTree tree("folder/\n");
  struct statx status {};
  ASSERT_EQ(::statx(AT_FDCWD, tree.at("folder").c_str(), 0, STATX_BTIME, &status), 0);
  const bool isRecorded = (status.stx_mask & STATX_BTIME) != 0;
  const std::int64_t expected =
      isRecorded ? status.stx_btime.tv_sec * 1'000'000'000 + status.stx_btime.tv_nsec : 0;
  EXPECT_EQ(FileIdentity::of(tree.at("folder")).value().created,
            static_cast<std::uint64_t>(expected));
}

TEST(FileIdentity, a_file_is_touched_by_new_content_even_if_its_time_is_set_back) {
  const TempTree tree("file 4K mtime=1700000000.25\n");
  const FileIdentity earlier = FileIdentity::of(tree.at("file")).value();
  EXPECT_TRUE(FileIdentity::of(tree.at("file")).value().isUntouchedSince(earlier));
  waitForAnotherTime(tree.at("file"));
  const FileIdentity now = FileIdentity::of(tree.at("file")).value();
  EXPECT_EQ(now, earlier);
  EXPECT_FALSE(now.isUntouchedSince(earlier));
}

TEST(FileIdentity, times_that_are_unknown_touch_nothing) {
  const FileIdentity one = {
      .kind = FileIdentity::Kind::file, .inode = 2, .created = 5, .changed = 7};
  FileIdentity other = one;
  EXPECT_TRUE(other.isUntouchedSince(one));
  other.changed = 0;
  other.created = 0;
  EXPECT_TRUE(other.isUntouchedSince(one));
  EXPECT_TRUE(one.isUntouchedSince(other));
  other.changed = 8;
  EXPECT_FALSE(other.isUntouchedSince(one));
  other = one;
  other.created = 6;
  EXPECT_FALSE(other.isUntouchedSince(one));
  other = one;
  other.inode = 3;
  EXPECT_FALSE(other.isUntouchedSince(one));
}

TEST(FileIdentity, each_part_but_the_time_of_creation_is_compared) {
  const FileIdentity one = {.kind = FileIdentity::Kind::file, .device = 1, .inode = 2, .size = 3};
  std::vector<FileIdentity> others(6, one);
  others[0].kind = FileIdentity::Kind::link;
  others[1].device = 9;
  others[2].inode = 9;
  others[3].size = 9;
  others[4].modifiedSeconds = 9;
  others[5].modifiedNanoseconds = 9;
  for (const FileIdentity& other : others) EXPECT_FALSE(one == other);
  FileIdentity created = one;
  created.created = 9;
  EXPECT_TRUE(one == created);
}

TEST(FileIdentity, an_item_that_cannot_be_examined_has_none) {
  const TempTree tree("file\n");
  EXPECT_EQ(FileIdentity::of(tree.at("missing")).error().kind, SystemError::Kind::notFound);
  EXPECT_EQ(FileIdentity::of(tree.at("file/below")).error().kind, SystemError::Kind::notADirectory);
}

}  // namespace
}  // namespace tessaly
