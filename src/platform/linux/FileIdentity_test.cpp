#include "platform/FileIdentity.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <vector>

#include "platform/linux/IdentityFromStatus.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

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
