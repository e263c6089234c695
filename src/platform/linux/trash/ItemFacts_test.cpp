#include "platform/linux/trash/ItemFacts.h"

#include <gtest/gtest.h>
#include <linux/magic.h>

namespace tessaly {
namespace {

struct statx statusOfFile() {
  struct statx status {};
  status.stx_mask = STATX_BASIC_STATS | STATX_BTIME;
  status.stx_dev_major = 8;
  status.stx_dev_minor = 1;
  status.stx_ino = 12;
  status.stx_mode = S_IFREG | 0644;
  status.stx_size = 4096;
  status.stx_btime = {.tv_sec = 100, .tv_nsec = 5, .__reserved = 0};
  status.stx_mtime = {.tv_sec = 200, .tv_nsec = 6, .__reserved = 0};
  status.stx_ctime = {.tv_sec = 300, .tv_nsec = 7, .__reserved = 0};
  return status;
}

struct statx withoutBirth(struct statx status) {
  status.stx_mask &= ~STATX_BTIME;
  status.stx_btime = {};
  return status;
}

TEST(ItemFacts, inode_numbers_are_lasting_on_the_disk_file_systems_of_linux) {
  for (const unsigned long type :
       {EXT4_SUPER_MAGIC, XFS_SUPER_MAGIC, static_cast<int>(BTRFS_SUPER_MAGIC), TMPFS_MAGIC,
        NFS_SUPER_MAGIC, V9FS_MAGIC, int{0x2FC12FC1}}) {
    EXPECT_TRUE(ItemFacts::inodesLast(type)) << std::hex << type;
  }
}

TEST(ItemFacts, inode_numbers_are_not_lasting_on_file_systems_that_do_not_store_them) {
  constexpr unsigned long sharedFoldersOfVirtualBox = 0x786F4256;
  for (const unsigned long type : std::initializer_list<unsigned long>{
           MSDOS_SUPER_MAGIC, EXFAT_SUPER_MAGIC, FUSE_SUPER_MAGIC, SMB_SUPER_MAGIC,
           CIFS_SUPER_MAGIC, SMB2_SUPER_MAGIC, OVERLAYFS_SUPER_MAGIC, sharedFoldersOfVirtualBox}) {
    EXPECT_FALSE(ItemFacts::inodesLast(type)) << std::hex << type;
  }
}

TEST(ItemFacts, an_inode_with_another_birth_time_is_another_item) {
  const struct statx one = statusOfFile();
  const std::string facts = ItemFacts::text(one, true);
  EXPECT_EQ(ItemFacts::text(one, true), facts);
  struct statx other = one;
  other.stx_btime.tv_nsec += 1;
  EXPECT_NE(ItemFacts::text(other, true), facts);
  other = one;
  other.stx_ino += 1;
  EXPECT_NE(ItemFacts::text(other, true), facts);
  other = one;
  other.stx_dev_minor += 1;
  EXPECT_NE(ItemFacts::text(other, true), facts);
  other = one;
  other.stx_mode = S_IFDIR | 0755;
  EXPECT_NE(ItemFacts::text(other, true), facts);
}

TEST(ItemFacts, an_item_with_a_known_birth_time_stays_the_same_when_it_is_written_to) {
  struct statx written = statusOfFile();
  const std::string facts = ItemFacts::text(written, true);
  written.stx_size += 1;
  written.stx_mtime.tv_sec += 1;
  written.stx_mode = S_IFREG | 0600;
  EXPECT_EQ(ItemFacts::text(written, true), facts);
}

TEST(ItemFacts, size_and_time_replace_a_birth_time_that_is_not_stored) {
  const struct statx one = withoutBirth(statusOfFile());
  const std::string facts = ItemFacts::text(one, true);
  struct statx other = one;
  other.stx_size += 1;
  EXPECT_NE(ItemFacts::text(other, true), facts);
  other = one;
  other.stx_mtime.tv_nsec += 1;
  EXPECT_NE(ItemFacts::text(other, true), facts);
  other = one;
  other.stx_ino += 1;
  EXPECT_NE(ItemFacts::text(other, true), facts);
}

TEST(ItemFacts, numbers_that_are_not_lasting_are_ignored) {
  const struct statx one = statusOfFile();
  const std::string facts = ItemFacts::text(one, false);
  struct statx other = one;
  other.stx_ino += 1;
  other.stx_dev_minor += 1;
  other.stx_btime.tv_sec += 1;
  EXPECT_EQ(ItemFacts::text(other, false), facts);
  other.stx_size += 1;
  EXPECT_NE(ItemFacts::text(other, false), facts);
  other = one;
  other.stx_mtime.tv_nsec += 1;
  EXPECT_NE(ItemFacts::text(other, false), facts);
  other = one;
  other.stx_mode = S_IFLNK | 0777;
  EXPECT_NE(ItemFacts::text(other, false), facts);
}

TEST(ItemFacts, a_move_does_not_change_the_facts) {
  struct statx moved = statusOfFile();
  moved.stx_ctime.tv_sec += 1000;
  for (const bool inodesLast : {true, false}) {
    EXPECT_EQ(ItemFacts::text(moved, inodesLast), ItemFacts::text(statusOfFile(), inodesLast));
    EXPECT_EQ(ItemFacts::text(withoutBirth(moved), inodesLast),
              ItemFacts::text(withoutBirth(statusOfFile()), inodesLast));
  }
}

TEST(ItemFacts, a_folder_with_another_birth_time_is_another_folder) {
  const struct statx one = statusOfFile();
  struct statx other = one;
  other.stx_btime.tv_sec += 1;
  EXPECT_NE(ItemFacts::folderText(other, true), ItemFacts::folderText(one, true));
}

TEST(ItemFacts, a_folder_stays_the_same_when_items_are_added) {
  const struct statx one = withoutBirth(statusOfFile());
  struct statx filled = one;
  filled.stx_size += 1;
  filled.stx_mtime.tv_sec += 1;
  EXPECT_EQ(ItemFacts::folderText(filled, true), ItemFacts::folderText(one, true));
  filled.stx_ino += 1;
  EXPECT_NE(ItemFacts::folderText(filled, true), ItemFacts::folderText(one, true));
  EXPECT_EQ(ItemFacts::folderText(filled, false), ItemFacts::folderText(one, false));
}

}  // namespace
}  // namespace tessaly
