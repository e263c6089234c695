#include "platform/linux/MountTable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(MountTable, each_line_is_read_past_the_optional_fields) {
  EXPECT_THAT(mountsIn("22 1 8:1 / / rw,noatime - ext4 /dev/sda1 rw\n"
                       "30 22 0:26 /sub /run rw shared:5 master:1 - tmpfs tmpfs rw\n"),
              ElementsAre(Mount{22, 1, "8:1", "/", "/", "ext4"},
                          Mount{30, 22, "0:26", "/sub", "/run", "tmpfs"}));
}

TEST(MountTable, octal_escapes_in_paths_are_decoded) {
  EXPECT_THAT(mountsIn("1 1 8:1 /a\\040b /media/My\\040Disk\\134\\011x\\012y rw - vfat d rw\n"),
              ElementsAre(Mount{1, 1, "8:1", "/a b", "/media/My Disk\\\tx\ny", "vfat"}));
  EXPECT_THAT(mountsIn("1 1 8:1 / /a\\04 rw - vfat d rw"),
              ElementsAre(Mount{1, 1, "8:1", "/", "/a\\04", "vfat"}));
}

TEST(MountTable, a_mount_point_that_is_not_utf8_keeps_its_bytes) {
  EXPECT_THAT(
      mountsIn("1 1 8:1 / /media/caf\xe9 rw - vfat d rw\n2 1 8:2 / /mnt/b rw - ext4 d rw\n"),
      ElementsAre(Mount{1, 1, "8:1", "/", "/media/caf\xe9", "vfat"},
                  Mount{2, 1, "8:2", "/", "/mnt/b", "ext4"}));
}

TEST(MountTable, all_mounts_on_one_point_are_kept_in_order) {
  EXPECT_THAT(
      mountsIn("1 1 8:1 / /a rw - autofs x rw\n2 1 8:1 / /a rw - nfs x rw"),
      ElementsAre(Mount{1, 1, "8:1", "/", "/a", "autofs"}, Mount{2, 1, "8:1", "/", "/a", "nfs"}));
}

TEST(MountTable, truncated_lines_are_left_out) {
  EXPECT_THAT(mountsIn(""), IsEmpty());
  EXPECT_THAT(mountsIn("\n\n1 1 8:1 / /a\n1 1 8:1 / /a rw -\n1 1 8:1 / /a rw ext4"), IsEmpty());
}

TEST(MountTable, lines_with_invalid_numbers_are_left_out) {
  EXPECT_THAT(mountsIn("x 1 8:1 / /a rw - ext4 d rw\n1 -1 8:1 / /a rw - ext4 d rw\n"
                       "99999999999999999999 1 8:1 / /a rw - ext4 d rw\n"),
              IsEmpty());
}

Mount ofType(const std::string& type) {
  return mountsIn("1 0 8:1 / /a rw - " + type + " none rw").at(0);
}

TEST(MountTable, pseudo_file_systems_are_known_by_their_type) {
  EXPECT_TRUE(ofType("proc").isPseudo());
  EXPECT_TRUE(ofType("autofs").isPseudo());
  EXPECT_FALSE(ofType("ext4").isPseudo());
  EXPECT_FALSE(ofType("tmpfs").isPseudo());
}

TEST(MountTable, file_systems_that_may_never_answer_are_known_by_their_type) {
  for (const char* type : {"nfs", "nfs4", "cifs", "smb3", "9p", "ceph", "fuse", "fuse.sshfs",
                           "fuse.gvfsd-fuse", "fuse.of-a-program-yet-to-be-written"}) {
    EXPECT_TRUE(ofType(type).isRemote()) << type;
  }
  for (const char* type : {"ext4", "btrfs", "overlay", "tmpfs", "fuseblk", "fuse.gocryptfs",
                           "fuse.mergerfs", "proc", "autofs"}) {
    EXPECT_FALSE(ofType(type).isRemote()) << type;
  }
}

}  // namespace
}  // namespace tessaly
