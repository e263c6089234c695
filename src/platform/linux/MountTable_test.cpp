#include "platform/linux/MountTable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(MountTable, tells_what_is_mounted_where_past_the_optional_fields) {
  EXPECT_THAT(mountsIn("22 1 8:1 / / rw,noatime - ext4 /dev/sda1 rw\n"
                       "30 22 0:26 /sub /run rw shared:5 master:1 - tmpfs tmpfs rw\n"),
              ElementsAre(Mount{22, 1, "8:1", "/", "/", "ext4"},
                          Mount{30, 22, "0:26", "/sub", "/run", "tmpfs"}));
}

TEST(MountTable, undoes_the_escapes_of_paths) {
  EXPECT_THAT(mountsIn("1 1 8:1 /a\\040b /media/My\\040Disk\\134\\011x\\012y rw - vfat d rw\n"),
              ElementsAre(Mount{1, 1, "8:1", "/a b", "/media/My Disk\\\tx\ny", "vfat"}));
  EXPECT_THAT(mountsIn("1 1 8:1 / /a\\04 rw - vfat d rw"),
              ElementsAre(Mount{1, 1, "8:1", "/", "/a\\04", "vfat"}));
}

TEST(MountTable, keeps_the_bytes_of_a_mount_point_that_is_not_utf8) {
  EXPECT_THAT(
      mountsIn("1 1 8:1 / /media/caf\xe9 rw - vfat d rw\n2 1 8:2 / /mnt/b rw - ext4 d rw\n"),
      ElementsAre(Mount{1, 1, "8:1", "/", "/media/caf\xe9", "vfat"},
                  Mount{2, 1, "8:2", "/", "/mnt/b", "ext4"}));
}

TEST(MountTable, keeps_all_mounts_of_one_point_in_order) {
  EXPECT_THAT(
      mountsIn("1 1 8:1 / /a rw - autofs x rw\n2 1 8:1 / /a rw - nfs x rw"),
      ElementsAre(Mount{1, 1, "8:1", "/", "/a", "autofs"}, Mount{2, 1, "8:1", "/", "/a", "nfs"}));
}

TEST(MountTable, leaves_out_lines_that_are_cut_short) {
  EXPECT_THAT(mountsIn(""), IsEmpty());
  EXPECT_THAT(mountsIn("\n\n1 1 8:1 / /a\n1 1 8:1 / /a rw -\n1 1 8:1 / /a rw ext4"), IsEmpty());
}

TEST(MountTable, leaves_out_lines_whose_numbers_cannot_be_read) {
  EXPECT_THAT(mountsIn("x 1 8:1 / /a rw - ext4 d rw\n1 -1 8:1 / /a rw - ext4 d rw\n"
                       "99999999999999999999 1 8:1 / /a rw - ext4 d rw\n"),
              IsEmpty());
}

Mount ofType(const std::string& type) {
  return mountsIn("1 0 8:1 / /a rw - " + type + " none rw").at(0);
}

TEST(MountTable, knows_what_holds_no_files_of_the_user) {
  EXPECT_TRUE(ofType("proc").isPseudo());
  EXPECT_TRUE(ofType("autofs").isPseudo());
  EXPECT_FALSE(ofType("ext4").isPseudo());
  EXPECT_FALSE(ofType("tmpfs").isPseudo());
}

}  // namespace
}  // namespace tessaly
