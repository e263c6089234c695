#include "platform/linux/walk/ClosedMounts.h"

#include <gtest/gtest.h>
#include <linux/magic.h>

namespace tessaly::walk {
namespace {

constexpr std::string_view table =
    "22 1 254:0 / / rw,relatime shared:1 - ext4 /dev/vda rw\n"
    "23 22 0:21 / /proc rw,nosuid - proc proc rw\n"
    "24 22 0:22 / /srv/jail/proc rw - proc proc rw\n"
    "25 22 0:23 / /srv/my\\040disk rw master:2 shared:9 - autofs systemd-1 rw,fd=29\n"
    "26 22 0:24 / /srv/data rw - autofs systemd-1 rw\n"
    "27 26 8:1 / /srv/data rw - xfs /dev/sda1 rw\n"
    "28 22 0:25 / /srv/scratch rw - tmpfs tmpfs rw\n";

ClosedMounts closedBelow(const std::string& root, std::string_view mountinfo,
                         bool entersRemote = true) {
  return closedMountsBelow(
      root, VisibleMounts(mountsIn(mountinfo)), [](const std::string&) { return true; },
      entersRemote);
}

const ClosedMounts* at(const ClosedMounts& places, std::initializer_list<const char*> components) {
  const ClosedMounts* place = &places;
  for (const char* component : components) {
    if (place != nullptr) place = place->below(component);
  }
  return place;
}

TEST(ClosedMounts, a_pseudo_file_system_below_the_root_is_closed) {
  const ClosedMounts places = closedBelow("/srv", table);
  const ClosedMounts* const proc = at(places, {"jail", "proc"});
  ASSERT_NE(proc, nullptr);
  EXPECT_TRUE(proc->isClosed());
  EXPECT_FALSE(at(places, {"jail"})->isClosed());
}

TEST(ClosedMounts, a_mount_outside_the_root_is_not_known) {
  const ClosedMounts places = closedBelow("/srv", table);
  EXPECT_EQ(at(places, {"proc"}), nullptr);
  EXPECT_EQ(at(closedBelow("/sr", table), {"v"}), nullptr);
}

TEST(ClosedMounts, all_mounts_are_below_the_root_directory) {
  const ClosedMounts places = closedBelow("/", table);
  ASSERT_NE(at(places, {"proc"}), nullptr);
  EXPECT_TRUE(at(places, {"proc"})->isClosed());
  EXPECT_TRUE(at(places, {"srv", "jail", "proc"})->isClosed());
}

TEST(ClosedMounts, an_automount_point_is_closed_until_something_is_mounted_on_it) {
  const ClosedMounts places = closedBelow("/srv", table);
  ASSERT_NE(at(places, {"my disk"}), nullptr);
  EXPECT_TRUE(at(places, {"my disk"})->isClosed());
  EXPECT_EQ(at(places, {"data"}), nullptr);
}

TEST(ClosedMounts, an_ordinary_file_system_is_open) {
  EXPECT_EQ(at(closedBelow("/srv", table), {"scratch"}), nullptr);
}

TEST(ClosedMounts, a_mount_that_another_one_hides_is_not_closed) {
  const std::string hidden = std::string(table) + "29 22 8:2 / /srv/jail rw - xfs /dev/sda2 rw\n";
  EXPECT_EQ(at(closedBelow("/srv", hidden), {"jail", "proc"}), nullptr);
}

TEST(ClosedMounts, a_mount_of_a_folder_that_is_visible_elsewhere_is_closed) {
  const std::string bound =
      std::string(table) + "29 22 254:0 /srv/a /srv/b\\040c rw - ext4 /dev/vda rw\n";
  const ClosedMounts places = closedBelow("/srv", bound);
  const ClosedMounts* const repeated = at(places, {"b c"});
  ASSERT_NE(repeated, nullptr);
  EXPECT_TRUE(repeated->isClosed());
  EXPECT_EQ(repeated->mount(), 29U);
  EXPECT_EQ(at(places, {"jail", "proc"})->mount(), 0U);
}

TEST(ClosedMounts, a_remote_file_system_is_closed_where_the_walk_is_to_leave_it_out) {
  const std::string remote = std::string(table) + "29 22 0:30 / /srv/nas rw - nfs server:/a rw\n";
  EXPECT_EQ(at(closedBelow("/srv", remote), {"nas"}), nullptr);
  const ClosedMounts closed = closedBelow("/srv", remote, false);
  const ClosedMounts* const place = at(closed, {"nas"});
  ASSERT_NE(place, nullptr);
  EXPECT_TRUE(place->isClosed());
  EXPECT_EQ(at(closedBelow("/srv/nas", remote, false), {"x"}), nullptr);
}

TEST(ClosedMounts,
     what_is_also_visible_below_a_remote_file_system_is_left_out_only_if_that_is_entered) {
  const std::string lines = std::string(table) +
                            "29 22 0:30 / /srv/nas rw - nfs server:/a rw\n"
                            "30 29 8:5 / /srv/nas/disk rw - ext4 d rw\n"
                            "31 22 8:5 /a /srv/part rw - ext4 d rw\n";
  const ClosedMounts entered = closedBelow("/srv", lines);
  ASSERT_NE(at(entered, {"part"}), nullptr);
  EXPECT_TRUE(at(entered, {"part"})->isClosed());
  EXPECT_EQ(at(closedBelow("/srv", lines, false), {"part"}), nullptr);
}

TEST(ClosedMounts, damaged_lines_are_passed_over) {
  for (const std::string_view text :
       {"", "\n\n", "24 22 0:22 / /srv/jail", "24 22 0:22 / /srv/jail/proc rw - ", "- - - - - -",
        "24 22 0:22 / /srv/a\\04 rw - ext4 x rw", "24 22 0:22 / /srv/b\\ rw -"}) {
    EXPECT_EQ(at(closedBelow("/srv", text), {"jail"}), nullptr) << text;
  }
}

TEST(ClosedMounts, a_file_system_that_holds_no_files_is_known_by_its_magic_number) {
  EXPECT_TRUE(isPseudoFileSystem(PROC_SUPER_MAGIC));
  EXPECT_TRUE(isPseudoFileSystem(AUTOFS_SUPER_MAGIC));
  EXPECT_FALSE(isPseudoFileSystem(EXT4_SUPER_MAGIC));
  EXPECT_FALSE(isPseudoFileSystem(TMPFS_MAGIC));
}

}  // namespace
}  // namespace tessaly::walk
