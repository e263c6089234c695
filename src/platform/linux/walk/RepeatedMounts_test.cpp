#include "platform/linux/walk/RepeatedMounts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <initializer_list>
#include <string>
#include <vector>

namespace tessaly::walk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A list of mounts in the kernel's format, built row by row.
class Table {
 public:
  // Adds a mount on row number `parent`; rows are numbered from 1.
  Table& add(int parent, const std::string& device, const std::string& root,
             const std::string& point, const std::string& type = "ext4") {
    text_ += std::to_string(++rows_) + " " + std::to_string(parent) + " " + device + " " + root +
             " " + point + " rw shared:1 - " + type + " none rw\n";
    return *this;
  }

  // The mount points left out of a walk of `root` that does not enter the folders `kept`.
  std::vector<std::string> leftOut(const std::string& root,
                                   std::initializer_list<std::string> kept = {}) const {
    const VisibleMounts mounts(mountsIn(text_));
    const Reaches reaches = [&](const std::string& path) {
      for (const std::string& place : kept) {
        if (isAtOrBelow(path, place)) return false;
      }
      return true;
    };
    std::vector<std::string> points;
    for (const auto index : repeatedMounts(mounts, root, reaches)) {
      points.push_back(mounts.all()[index].point);
    }
    return points;
  }

 private:
  std::string text_;
  int rows_ = 0;
};

Table disk() {
  return Table().add(0, "8:1", "/", "/");
}

TEST(RepeatedMounts, a_folder_that_is_bound_to_another_place_is_left_out_there) {
  EXPECT_THAT(disk().add(1, "8:1", "/data/home", "/home").leftOut("/"), ElementsAre("/home"));
}

TEST(RepeatedMounts, a_mount_of_another_device_is_walked) {
  EXPECT_THAT(disk().add(1, "8:2", "/", "/home").add(1, "8:3", "/x", "/opt").leftOut("/"),
              IsEmpty());
}

TEST(RepeatedMounts, roots_are_compared_by_components) {
  Table table = disk();
  table.add(1, "8:2", "/a", "/one").add(1, "8:2", "/ab", "/two").add(1, "8:2", "/a/b", "/three");
  EXPECT_THAT(table.leftOut("/"), ElementsAre("/three"));
}

TEST(RepeatedMounts, the_root_of_the_walk_is_never_left_out) {
  const Table table = disk().add(1, "8:1", "/srv", "/mnt/x");
  EXPECT_THAT(table.leftOut("/mnt/x"), IsEmpty());
  EXPECT_THAT(table.leftOut("/mnt/x/below"), IsEmpty());
  EXPECT_THAT(table.leftOut("/mnt"), IsEmpty());
}

TEST(RepeatedMounts, a_mount_is_walked_if_nothing_else_in_the_walk_shows_its_folder) {
  const Table table = disk().add(1, "8:1", "/data/home", "/home/all");
  EXPECT_THAT(table.leftOut("/home"), IsEmpty());
  EXPECT_THAT(table.leftOut("/"), ElementsAre("/home/all"));
}

TEST(RepeatedMounts, a_mount_is_walked_if_a_rule_excludes_the_original) {
  const Table table = disk().add(1, "8:1", "/data/home", "/home");
  EXPECT_THAT(table.leftOut("/", {"/data"}), IsEmpty());
  EXPECT_THAT(table.leftOut("/", {"/data/home"}), IsEmpty());
  EXPECT_THAT(table.leftOut("/", {"/data/home/me"}), ElementsAre("/home"));
}

TEST(RepeatedMounts, a_mount_below_an_excluded_folder_is_not_left_out) {
  EXPECT_THAT(disk().add(1, "8:1", "/data", "/mnt/x").leftOut("/", {"/mnt"}), IsEmpty());
}

TEST(RepeatedMounts, a_mount_is_walked_if_another_one_hides_the_original) {
  EXPECT_THAT(disk().add(1, "8:1", "/data/home", "/home").add(1, "8:2", "/", "/data").leftOut("/"),
              IsEmpty());
  EXPECT_THAT(
      disk().add(1, "8:1", "/data/home", "/home").add(1, "8:2", "/", "/data/home").leftOut("/"),
      IsEmpty());
  EXPECT_THAT(
      disk().add(1, "8:1", "/data/home", "/home").add(1, "8:2", "/", "/data/other").leftOut("/"),
      ElementsAre("/home"));
}

TEST(RepeatedMounts, two_parts_of_one_btrfs_are_both_walked) {
  Table table;
  table.add(0, "0:30", "/@", "/", "btrfs").add(1, "0:30", "/@home", "/home", "btrfs");
  EXPECT_THAT(table.leftOut("/"), IsEmpty());
  // A mount of the whole file system, which the walk does not enter.
  table.add(1, "0:30", "/", "/mnt/top", "btrfs");
  EXPECT_THAT(table.leftOut("/", {"/mnt"}), IsEmpty());
  EXPECT_THAT(table.leftOut("/mnt/top"), IsEmpty());
}

TEST(RepeatedMounts, parts_of_a_btrfs_are_left_out_if_the_whole_of_it_is_walked) {
  Table table;
  table.add(0, "0:30", "/@", "/", "btrfs")
      .add(1, "0:30", "/@home", "/home", "btrfs")
      .add(1, "0:30", "/", "/pool", "btrfs");
  EXPECT_THAT(table.leftOut("/"), ElementsAre("/home"));
  EXPECT_THAT(table.leftOut("/home"), IsEmpty());
}

TEST(RepeatedMounts, a_part_of_a_btrfs_mounted_in_its_own_place_is_walked) {
  Table table;
  table.add(0, "0:30", "/", "/", "btrfs").add(1, "0:30", "/var", "/var", "btrfs");
  EXPECT_THAT(table.leftOut("/"), IsEmpty());
}

TEST(RepeatedMounts, the_first_of_equal_mounts_is_walked) {
  Table table = disk();
  table.add(1, "8:2", "/", "/a").add(1, "8:2", "/", "/b").add(1, "8:2", "/", "/c");
  EXPECT_THAT(table.leftOut("/"), ElementsAre("/b", "/c"));
  EXPECT_THAT(table.leftOut("/", {"/a"}), ElementsAre("/c"));
  EXPECT_THAT(table.leftOut("/b"), IsEmpty());
}

TEST(RepeatedMounts, the_widest_mount_of_a_chain_is_walked) {
  Table table = disk();
  table.add(1, "8:2", "/x/y", "/c").add(1, "8:2", "/x", "/b").add(1, "8:2", "/", "/a");
  EXPECT_THAT(table.leftOut("/"), ElementsAre("/c", "/b"));
  EXPECT_THAT(table.leftOut("/", {"/a"}), ElementsAre("/c"));
}

TEST(RepeatedMounts, a_folder_bound_into_itself_is_left_out) {
  EXPECT_THAT(disk().add(1, "8:1", "/srv", "/srv/a/b").leftOut("/"), ElementsAre("/srv/a/b"));
  EXPECT_THAT(disk().add(1, "8:1", "/srv", "/srv/a/b").leftOut("/srv"), ElementsAre("/srv/a/b"));
  EXPECT_THAT(disk().add(1, "8:1", "/srv", "/srv/a/b").leftOut("/srv/a"), IsEmpty());
}

TEST(RepeatedMounts, two_mounts_that_contain_each_others_originals_are_not_both_left_out) {
  Table table = disk();
  table.add(1, "8:2", "/", "/m")
      .add(1, "8:3", "/", "/p")
      .add(3, "8:2", "/", "/p/o")
      .add(2, "8:3", "/", "/m/q");
  EXPECT_THAT(table.leftOut("/"), ElementsAre("/p/o", "/m/q"));
}

TEST(RepeatedMounts, a_mount_that_contains_another_with_more_to_show_is_walked) {
  Table table = disk();
  table.add(1, "8:2", "/a/b", "/m")
      .add(1, "8:3", "/x/y", "/p")
      .add(3, "8:2", "/a", "/p/o")
      .add(2, "8:3", "/x", "/m/q");
  EXPECT_THAT(table.leftOut("/"), IsEmpty());
}

TEST(RepeatedMounts, a_mount_that_shows_another_may_be_left_out_if_a_third_one_shows_both) {
  Table table = disk();
  table.add(1, "8:1", "/srv/deep", "/c").add(1, "8:1", "/srv", "/b");
  EXPECT_THAT(table.leftOut("/"), ElementsAre("/c", "/b"));
}

TEST(RepeatedMounts, a_mount_inside_one_that_is_left_out_does_not_replace_another) {
  Table table = disk();
  // /b is a recursive bind mount, so it includes the mounts in its source.
  table.add(1, "8:2", "/", "/a/disk").add(1, "8:1", "/a", "/b").add(3, "8:2", "/", "/b/disk");
  EXPECT_THAT(table.leftOut("/"), ElementsAre("/b", "/b/disk"));
  EXPECT_THAT(table.leftOut("/b"), IsEmpty());
}

TEST(RepeatedMounts, a_mount_that_alone_shows_a_disk_is_walked) {
  Table table = disk();
  table.add(1, "8:1", "/a", "/b").add(2, "8:2", "/", "/b/disk");
  EXPECT_THAT(table.leftOut("/"), IsEmpty());
}

TEST(RepeatedMounts, hidden_mounts_are_ignored) {
  Table table = disk();
  table.add(1, "8:2", "/", "/a").add(2, "8:3", "/", "/a").add(1, "8:2", "/", "/b");
  EXPECT_THAT(table.leftOut("/"), IsEmpty());
}

TEST(RepeatedMounts, the_mount_of_a_deleted_folder_is_walked) {
  EXPECT_THAT(disk().add(1, "8:1", "/gone//deleted", "/home").leftOut("/"), IsEmpty());
}

TEST(RepeatedMounts, pseudo_file_systems_are_ignored) {
  Table table = disk();
  table.add(1, "0:5", "/", "/proc", "proc").add(1, "0:5", "/", "/jail/proc", "proc");
  EXPECT_THAT(table.leftOut("/"), IsEmpty());
}

TEST(RepeatedMounts, names_that_are_not_utf8_are_compared_as_bytes) {
  EXPECT_THAT(disk().add(1, "8:1", "/caf\xe9\\040x", "/b\xff").leftOut("/"), ElementsAre("/b\xff"));
  EXPECT_THAT(disk().add(1, "8:1", "/caf\xe9\\040x", "/b").leftOut("/", {"/caf\xe9 x"}), IsEmpty());
}

TEST(RepeatedMounts, an_empty_list_leaves_nothing_out) {
  EXPECT_THAT(Table().leftOut("/"), IsEmpty());
}

}  // namespace
}  // namespace tessaly::walk
