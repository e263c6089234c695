#include "platform/linux/LinuxMountedVolumes.h"

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/PrivateMounts.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A list of mounts written by the test, and a home.
class LinuxMountedVolumesTest : public testing::Test {
 protected:
  LinuxMountedVolumes volumes(const std::string& mountinfo) const {
    std::ofstream(tree_.at("mountinfo")) << mountinfo;
    return LinuxMountedVolumes({.homeTrash = tree_.at("home/Trash"),
                                .mountinfo = tree_.at("mountinfo"),
                                .user = getuid()});
  }

  std::vector<std::string> listed(const std::string& mountinfo) const {
    const Result<std::vector<MountedVolume>> all = volumes(mountinfo).list();
    EXPECT_TRUE(all.ok());
    std::vector<std::string> paths;
    for (const MountedVolume& volume : all.value()) paths.push_back(volume.path);
    return paths;
  }

  TempTree tree_;
};

TEST_F(LinuxMountedVolumesTest, mounted_volumes_are_listed_in_the_order_of_the_kernels_list) {
  const Result<std::vector<MountedVolume>> all =
      volumes("22 1 8:1 / / rw - ext4 d rw\n30 22 8:2 /a /home rw - xfs e rw\n").list();
  ASSERT_TRUE(all.ok());
  EXPECT_THAT(all.value(), ElementsAre(MountedVolume{22, "/", "8:1", "/", "ext4"},
                                       MountedVolume{30, "/home", "8:2", "/a", "xfs"}));
}

TEST_F(LinuxMountedVolumesTest, mount_points_keep_blanks_and_bytes_that_are_not_utf8) {
  EXPECT_THAT(listed("22 1 8:1 / / rw - ext4 d rw\n"
                     "30 22 8:2 / /media/caf\xe9 rw - vfat e rw\n"
                     "31 22 8:3 / /media/My\\040Disk rw - vfat f rw\n"),
              ElementsAre("/", "/media/caf\xe9", "/media/My Disk"));
}

TEST_F(LinuxMountedVolumesTest, hidden_mounts_and_pseudo_file_systems_are_left_out) {
  EXPECT_THAT(listed("22 1 8:1 / / rw - ext4 d rw\n"
                     "30 22 8:2 / /mnt/a rw - xfs e rw\n"
                     "31 30 8:3 / /mnt/a rw - xfs f rw\n"
                     "32 22 0:5 / /proc rw - proc proc rw\n"
                     "33 22 0:6 / /net rw - autofs none rw\n"),
              ElementsAre("/", "/mnt/a"));
}

TEST_F(LinuxMountedVolumesTest, a_missing_list_of_mounts_is_an_error) {
  LinuxMountedVolumes volumes({.homeTrash = "", .mountinfo = tree_.at("missing"), .user = 0});
  ASSERT_FALSE(volumes.list().ok());
  EXPECT_EQ(volumes.list().error().path, tree_.at("missing"));
}

TEST_F(LinuxMountedVolumesTest, the_trash_of_the_home_and_that_of_a_volume_are_counted_separately) {
  const std::string user = std::to_string(getuid());
  tree_.plant("home/\n  Trash/\n    files/\n      a\n      b\none/\n  .Trash-" + user +
              "/\n    files/\n      c\ntwo/\n");
  LinuxMountedVolumes all = volumes("");
  const auto inHome = all.trashInHome();
  const auto onOne = all.trashOn({1, tree_.at("one"), "8:1", "/"});
  const auto onTwo = all.trashOn({2, tree_.at("two"), "8:2", "/"});
  ASSERT_TRUE(inHome.ok() && onOne.ok() && onTwo.ok());
  struct stat status {};
  ASSERT_EQ(stat(tree_.at("home/Trash").c_str(), &status), 0);
  EXPECT_THAT(
      inHome.value(),
      ElementsAre(CountedTrash{status.st_dev, status.st_ino, 2, {tree_.at("home/Trash/files")}}));
  ASSERT_EQ(onOne.value().size(), 1U);
  EXPECT_EQ(onOne.value()[0].items, 1);
  EXPECT_THAT(onOne.value()[0].contents, ElementsAre(tree_.at("one/.Trash-" + user + "/files")));
  EXPECT_THAT(onTwo.value(), IsEmpty());
}

TEST_F(LinuxMountedVolumesTest, an_empty_trash_has_no_contents_and_partly_deleted_items_are_some) {
  tree_.plant("home/\n  Trash/\n    files/\n    info/\n      old.trashinfo\n    expunged/\n");
  LinuxMountedVolumes all = volumes("");
  ASSERT_EQ(all.trashInHome().value().size(), 1U);
  EXPECT_THAT(all.trashInHome().value()[0].contents, IsEmpty());
  tree_.plant("home/Trash/expunged", "half/\n  rest\n");
  EXPECT_THAT(all.trashInHome().value()[0].contents, ElementsAre(tree_.at("home/Trash/expunged")));
}

TEST_F(LinuxMountedVolumesTest, a_link_in_place_of_the_items_has_no_contents) {
  tree_.plant("elsewhere/\n  mine\nhome/\n  Trash/\n    files -> ../../elsewhere\n");
  LinuxMountedVolumes all = volumes("");
  ASSERT_EQ(all.trashInHome().value().size(), 1U);
  EXPECT_THAT(all.trashInHome().value()[0].contents, IsEmpty());
}

TEST_F(LinuxMountedVolumesTest, a_home_without_a_trash_folder_has_no_trash_items) {
  const auto inHome = volumes("").trashInHome();
  ASSERT_TRUE(inHome.ok());
  EXPECT_THAT(inHome.value(), IsEmpty());
}

TEST(LinuxMountedVolumesOfMachine, a_volume_has_figures_only_while_its_own_mount_is_visible) {
  const TempTree tree("disk/\n");
  const std::string told = inPrivateMounts([&]() -> std::string {
    if (mount("tmpfs", tree.at("disk").c_str(), "tmpfs", 0, "size=8M") != 0) return refusal();
    LinuxMountedVolumes volumes;
    const Result<std::vector<MountedVolume>> all = volumes.list();
    if (!all.ok()) return "no list";
    for (const MountedVolume& volume : all.value()) {
      if (volume.path != tree.at("disk")) continue;
      const Result<VolumeFigures> figures = volumes.figures(volume);
      if (!figures.ok()) return figures.error().description();
      if (figures.value().total != 8 << 20) return "another size";
      if (figures.value().used + figures.value().free != 8 << 20) return "figures do not add up";
      if (mount("tmpfs", tree.at("disk").c_str(), "tmpfs", 0, nullptr) != 0) return refusal();
      if (volumes.figures(volume).ok()) return "figures of another one";
      if (umount(tree.at("disk").c_str()) != 0) return refusal();
      if (!volumes.figures(volume).ok()) return "no figures any more";
      if (umount(tree.at("disk").c_str()) != 0) return refusal();
      return volumes.figures(volume).ok() ? "figures of what is gone" : "";
    }
    return "not listed";
  });
  if (told.starts_with("refused")) GTEST_SKIP() << "no mounting here, " << told;
  EXPECT_EQ(told, "");
}

TEST(MountedVolume, a_volume_shows_another_if_it_contains_its_folder_of_the_same_device) {
  const MountedVolume whole{1, "/a", "8:1", "/"};
  const MountedVolume part{2, "/b", "8:1", "/x"};
  const MountedVolume near{3, "/c", "8:1", "/xy"};
  const MountedVolume other{4, "/d", "8:2", "/x"};
  EXPECT_TRUE(whole.shows(part));
  EXPECT_FALSE(part.shows(whole));
  EXPECT_TRUE(part.shows(part));
  EXPECT_FALSE(part.shows(near));
  EXPECT_FALSE(whole.shows(other));
}

}  // namespace
}  // namespace tessaly
