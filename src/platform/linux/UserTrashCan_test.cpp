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

TEST_F(UserTrashCanTest, is_empty_where_nothing_was_ever_thrown_away) {
  EXPECT_EQ(count(), 0);
}

TEST_F(UserTrashCanTest, is_empty_without_a_folder_of_items) {
  build("home/\n  Trash/\n    info/\n");
  EXPECT_EQ(count(), 0);
}

TEST_F(UserTrashCanTest, counts_items_and_not_what_is_in_them) {
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

TEST_F(UserTrashCanTest, follows_a_home_trash_that_the_user_has_moved) {
  build("elsewhere/\n  files/\n    a\nhome/\n  Trash -> ../elsewhere\n");
  EXPECT_EQ(count(), 1);
}

TEST_F(UserTrashCanTest, counts_what_lies_on_other_file_systems) {
  build("one/\n  .Trash-" + user() + "/\n    files/\n      a\n      b\nblank\\s\\n/\n  .Trash-" +
            user() + "/\n    files/\n      c\nhome/\n  Trash/\n    files/\n      d\n",
        {"one", "blank\\040\\012"});
  EXPECT_EQ(count(), 4);
}

TEST_F(UserTrashCanTest, counts_both_kinds_of_one_file_system) {
  build("one/\n  .Trash/ mode=01777\n    " + user() + "/\n      files/\n        a\n  .Trash-" +
            user() + "/\n    files/\n      b\n",
        {"one"});
  EXPECT_EQ(count(), 2);
}

TEST_F(UserTrashCanTest, leaves_out_a_shared_trash_that_is_not_sticky) {
  build("one/\n  .Trash/ mode=0777\n    " + user() + "/\n      files/\n        a\n", {"one"});
  EXPECT_EQ(count(), 0);
}

TEST_F(UserTrashCanTest, leaves_out_links_on_other_file_systems) {
  const std::string name = ".Trash-" + user();
  build("real/ mode=01777\n  files/\n    a\n  " + user() +
            "/\n    files/\n      b\none/\n  .Trash -> ../real\n  " + name +
            " -> ../real\ntwo/\n  " + name +
            "/\n    files -> ../../real/files\nthree/\n  .Trash/ mode=01777\n    " + user() +
            " -> ../../real\n",
        {"one", "two", "three"});
  EXPECT_EQ(count(), 0);
}

TEST_F(UserTrashCanTest, leaves_out_the_trash_of_others) {
  const std::string other = std::to_string(getuid() + 1);
  build("one/\n  .Trash-" + other + "/\n    files/\n      a\n  .Trash/ mode=01777\n    " + other +
            "/\n      files/\n        b\n",
        {"one"});
  EXPECT_EQ(count(), 0);
}

TEST_F(UserTrashCanTest, leaves_out_a_folder_of_its_name_that_belongs_to_another) {
  if (getuid() != 0) GTEST_SKIP() << needs(Need::root, "only root gives folders away");
  build(
      "one/\n  .Trash-0/\n    files/\n      a\n  .Trash/ mode=01777\n    0/\n      files/\n        "
      "b\n",
      {"one"});
  ASSERT_EQ(chown(tree_.at("one/.Trash-0").c_str(), 1, 1), 0);
  ASSERT_EQ(chown(tree_.at("one/.Trash/0").c_str(), 1, 1), 0);
  EXPECT_EQ(count(), 0);
}

TEST_F(UserTrashCanTest, counts_a_file_system_once_that_is_mounted_twice) {
  build("one/\n  .Trash-" + user() + "/\n    files/\n      a\nagain -> one\n",
        {"one", "one", "again"});
  EXPECT_EQ(count(), 1);
}

TEST_F(UserTrashCanTest, does_not_look_at_what_would_mount_something) {
  build("one/\n  .Trash-" + user() + "/\n    files/\n      a\n");
  addMount(tree_.at("one"), "autofs");
  EXPECT_EQ(count(), 0);
}

TEST_F(UserTrashCanTest, leaves_out_mounts_that_are_gone) {
  build("one\n", {"missing", "one"});
  EXPECT_EQ(count(), 0);
}

TEST_F(UserTrashCanTest, fails_where_a_trash_of_the_user_cannot_be_read) {
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

TEST_F(UserTrashCanTest, leaves_out_file_systems_whose_top_is_closed_to_the_user) {
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

TEST_F(UserTrashCanTest, fails_without_the_list_of_mounts) {
  const Result<std::int64_t> counted =
      UserTrashCan({tree_.at("home/Trash"), tree_.at("missing"), getuid()}).count();
  ASSERT_FALSE(counted.ok());
  EXPECT_EQ(counted.error().kind, SystemError::Kind::notFound);
  EXPECT_EQ(counted.error().path, tree_.at("missing"));
}

TEST(TrashConfig, is_the_users_data_folder_and_the_kernels_list) {
  const TrashConfig config = TrashConfig::current();
  EXPECT_TRUE(config.homeTrash.ends_with("/Trash"));
  EXPECT_EQ(config.mountinfo, "/proc/self/mountinfo");
  EXPECT_EQ(config.user, geteuid());
}

}  // namespace
}  // namespace tessaly
