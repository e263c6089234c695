#include "platform/linux/MountTable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(MountTable, tells_point_and_type_past_the_optional_fields) {
  EXPECT_THAT(mountsIn("22 1 8:1 / / rw,noatime - ext4 /dev/sda1 rw\n"
                       "30 22 0:26 / /run rw shared:5 master:1 - tmpfs tmpfs rw\n"),
              ElementsAre(Mount{"/", "ext4"}, Mount{"/run", "tmpfs"}));
}

TEST(MountTable, undoes_the_escapes_of_a_mount_point) {
  EXPECT_THAT(mountsIn("1 1 8:1 / /media/My\\040Disk\\134\\011x\\012y rw - vfat d rw\n"),
              ElementsAre(Mount{"/media/My Disk\\\tx\ny", "vfat"}));
  EXPECT_THAT(mountsIn("1 1 8:1 / /a\\04 rw - vfat d rw"), ElementsAre(Mount{"/a\\04", "vfat"}));
}

TEST(MountTable, keeps_all_mounts_of_one_point_in_order) {
  EXPECT_THAT(mountsIn("1 1 8:1 / /a rw - autofs x rw\n2 1 8:1 / /a rw - nfs x rw"),
              ElementsAre(Mount{"/a", "autofs"}, Mount{"/a", "nfs"}));
}

TEST(MountTable, leaves_out_lines_that_are_cut_short) {
  EXPECT_THAT(mountsIn(""), IsEmpty());
  EXPECT_THAT(mountsIn("\n\n1 1 8:1 / /a\n1 1 8:1 / /a rw -\n1 1 8:1 / /a rw ext4"), IsEmpty());
}

TEST(MountTable, knows_what_holds_no_files_of_the_user) {
  EXPECT_TRUE((Mount{"/proc", "proc"}.isPseudo()));
  EXPECT_TRUE((Mount{"/net", "autofs"}.isPseudo()));
  EXPECT_FALSE((Mount{"/", "ext4"}.isPseudo()));
  EXPECT_FALSE((Mount{"/tmp", "tmpfs"}.isPseudo()));
}

}  // namespace
}  // namespace tessaly
