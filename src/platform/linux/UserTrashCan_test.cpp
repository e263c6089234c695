#include "platform/linux/UserTrashCan.h"

#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/ForkedChild.h"
#include "support/Needs.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

// A home and a few mounts, all in one folder. Items whose names begin with "own" belong to the
// user.
class UserTrashCanTest : public testing::Test {
 protected:
  TempTree tree_;

  void build(const std::string& items, const std::vector<std::string>& mounts = {}) {
    tree_.plant(items);
    for (const std::string& mount : mounts) addMount(tree_.at(mount), "ext4");
  }

  void addMount(const std::string& point, const std::string& type) {
    mountinfo_ += "1 1 8:1 / " + point + " rw - " + type + " none rw\n";
  }

  UserTrashCan trashCan() const {
    std::ofstream(tree_.at("mountinfo")) << mountinfo_;
    return UserTrashCan({.homeTrash = tree_.at("home/Trash"),
                         .mountinfo = tree_.at("mountinfo"),
                         .user = getuid()});
  }

  std::int64_t count() const {
    const Result<std::int64_t> counted = trashCan().count();
    EXPECT_TRUE(counted.ok());
    return counted.ok() ? counted.value() : -1;
  }

  static std::string user() { return std::to_string(getuid()); }

  std::string mountinfo_;
};

TEST_F(UserTrashCanTest, the_trash_is_empty_without_any_trash_folder) {
  EXPECT_EQ(count(), 0);
}

TEST_F(UserTrashCanTest, the_trash_is_empty_without_a_folder_of_files) {
  build("home/\n  Trash/\n    info/\n");
  EXPECT_EQ(count(), 0);
}

TEST_F(UserTrashCanTest, items_are_counted_without_their_contents) {
  build(R"(
    home/
      Trash/
        files/
          film 4K
          .hidden
          gone -> nowhere
          folder/
            a
            b
          \xff\n
        info/
          film.trashinfo
        expunged/
          1
  )");
  EXPECT_EQ(count(), 5);
}

TEST_F(UserTrashCanTest, a_link_in_place_of_the_home_trash_is_followed) {
  build("elsewhere/\n  files/\n    a\nhome/\n  Trash -> ../elsewhere\n");
  EXPECT_EQ(count(), 1);
}

TEST_F(UserTrashCanTest, items_on_other_file_systems_are_counted) {
  build("one/\n  .Trash-" + user() + "/\n    files/\n      a\n      b\nblank\\s\\n/\n  .Trash-" +
            user() + "/\n    files/\n      c\nhome/\n  Trash/\n    files/\n      d\n",
        {"one", "blank\\040\\012"});
  EXPECT_EQ(count(), 4);
}

TEST_F(UserTrashCanTest, both_trash_folders_of_one_file_system_are_counted) {
  build("one/\n  .Trash/ mode=01777\n    " + user() + "/\n      files/\n        a\n  .Trash-" +
            user() + "/\n    files/\n      b\n",
        {"one"});
  EXPECT_EQ(count(), 2);
}

TEST_F(UserTrashCanTest, a_shared_trash_without_the_sticky_bit_is_left_out) {
  build("one/\n  .Trash/ mode=0777\n    " + user() + "/\n      files/\n        a\n", {"one"});
  EXPECT_EQ(count(), 0);
}

TEST_F(UserTrashCanTest, links_on_other_file_systems_are_left_out) {
  const std::string name = ".Trash-" + user();
  build("real/ mode=01777\n  files/\n    a\n  " + user() +
            "/\n    files/\n      b\none/\n  .Trash -> ../real\n  " + name +
            " -> ../real\ntwo/\n  " + name +
            "/\n    files -> ../../real/files\nthree/\n  .Trash/ mode=01777\n    " + user() +
            " -> ../../real\n",
        {"one", "two", "three"});
  EXPECT_EQ(count(), 0);
}

TEST_F(UserTrashCanTest, the_trash_of_other_users_is_left_out) {
  const std::string other = std::to_string(getuid() + 1);
  build("one/\n  .Trash-" + other + "/\n    files/\n      a\n  .Trash/ mode=01777\n    " + other +
            "/\n      files/\n        b\n",
        {"one"});
  EXPECT_EQ(count(), 0);
}

TEST_F(UserTrashCanTest, a_folder_with_the_users_number_that_belongs_to_another_user_is_left_out) {
  if (getuid() != 0) GTEST_SKIP() << needs(Need::root, "only root gives folders away");
  build(
      "one/\n  .Trash-0/\n    files/\n      a\n  .Trash/ mode=01777\n    0/\n      files/\n        "
      "b\n",
      {"one"});
  ASSERT_EQ(chown(tree_.at("one/.Trash-0").c_str(), 1, 1), 0);
  ASSERT_EQ(chown(tree_.at("one/.Trash/0").c_str(), 1, 1), 0);
  EXPECT_EQ(count(), 0);
}

TEST_F(UserTrashCanTest, a_file_system_that_is_mounted_twice_is_counted_once) {
  build("one/\n  .Trash-" + user() + "/\n    files/\n      a\nagain -> one\n",
        {"one", "one", "again"});
  EXPECT_EQ(count(), 1);
}

TEST_F(UserTrashCanTest, an_automount_point_is_not_examined) {
  build("one/\n  .Trash-" + user() + "/\n    files/\n      a\n");
  addMount(tree_.at("one"), "autofs");
  EXPECT_EQ(count(), 0);
}

TEST_F(UserTrashCanTest, missing_mount_points_are_left_out) {
  build("one\n", {"missing", "one"});
  EXPECT_EQ(count(), 0);
}

TEST_F(UserTrashCanTest, a_trash_of_the_user_that_cannot_be_read_is_an_error) {
  const std::string mountinfo = tree_.at("mountinfo");
  ASSERT_EQ(chmod(tree_.path().c_str(), 0777), 0);
  EXPECT_EQ(asOtherUser([&]() -> std::string {
              tree_.plant("home/\n  Trash/\n    files/ mode=0\n");
              std::ofstream(mountinfo).flush();
              const Result<std::int64_t> counted =
                  UserTrashCan({tree_.at("home/Trash"), mountinfo, getuid()}).count();
              if (counted.ok()) return "counted";
              if (counted.error().path != tree_.at("home/Trash")) return "another path";
              return counted.error().kind == SystemError::Kind::notPermitted ? "" : "another kind";
            }),
            "");
}

TEST_F(UserTrashCanTest, file_systems_whose_top_folder_is_closed_to_the_user_are_left_out) {
  const std::string mountinfo = tree_.at("mountinfo");
  build("one/ mode=0\n", {"one"});
  std::ofstream(mountinfo) << mountinfo_;
  ASSERT_EQ(chmod(tree_.path().c_str(), 0755), 0);
  EXPECT_EQ(asOtherUser([&]() -> std::string {
              const Result<std::int64_t> counted =
                  UserTrashCan({tree_.at("home/Trash"), mountinfo, getuid()}).count();
              return counted.ok() && counted.value() == 0 ? "" : "not 0";
            }),
            "");
}

TEST_F(UserTrashCanTest, a_missing_list_of_mounts_is_an_error) {
  const Result<std::int64_t> counted =
      UserTrashCan({tree_.at("home/Trash"), tree_.at("missing"), getuid()}).count();
  ASSERT_FALSE(counted.ok());
  EXPECT_EQ(counted.error().kind, SystemError::Kind::notFound);
  EXPECT_EQ(counted.error().path, tree_.at("missing"));
}

TEST(TrashConfig, the_current_configuration_has_the_users_trash_and_the_kernels_list) {
  const TrashConfig config = TrashConfig::current();
  EXPECT_TRUE(config.homeTrash.ends_with("/Trash"));
  EXPECT_EQ(config.mountinfo, "/proc/self/mountinfo");
  EXPECT_EQ(config.user, geteuid());
}

}  // namespace
}  // namespace tessaly
