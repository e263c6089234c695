// Which links are followed, depending on their owners. A third user owns the links, so only root
// can set up the tests; an unprivileged user writes the file.
#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/AtomicFile.h"
#include "support/ForkedChild.h"
#include "support/Needs.h"
#include "support/PlainFiles.h"
#include "support/TempTree.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

constexpr uid_t third = 4321;
constexpr uid_t nobody = 65534;  // the user of asOtherUser()

class AtomicFileLinks : public ::testing::Test {
 protected:
  void SetUp() override {
    if (geteuid() != 0)
      GTEST_SKIP() << needs(Need::root, "only root can give a link to another user");
    ASSERT_EQ(chmod(tree_.path().c_str(), 0755), 0);
    ASSERT_EQ(chmod(tree_.at("private").c_str(), 0777), 0);
    putFile(tree_.at("private/settings"), "old");
    ASSERT_EQ(chmod(tree_.at("private/settings").c_str(), 0666), 0);
  }

  void give(const std::string& name, uid_t owner) const {
    ASSERT_EQ(lchown(tree_.at(name).c_str(), owner, owner), 0);
  }

  // "" if the file at `name` was replaced, else the error.
  std::string replaced(const std::string& name) const {
    return asOtherUser([&] {
      const Outcome outcome = AtomicFile::replace(
          tree_.at(name), "new", AtomicFile::Durability::synced, AtomicFile::Access::usual);
      return outcome ? std::string() : outcome.error().description();
    });
  }
  std::string refusal(const std::string& name) const {
    return SystemError::fromErrno(EACCES, tree_.at(name)).description();
  }

  TempTree tree_{
      "private/\n"
      "shared/ mode=01777\n"
      "  report -> ../private/settings\n"
      "  fresh -> ../private/fresh\n"
      "  way -> ../private\n"
      "  chain -> report\n"
      "closed/\n"
      "  report -> ../private/settings\n"
      "  way -> ../private\n"};
};

TEST_F(AtomicFileLinks, a_replacement_does_not_follow_a_link_of_a_third_user) {
  give("shared/report", third);
  give("shared/fresh", third);
  EXPECT_EQ(replaced("shared/report"), refusal("shared/report"));
  EXPECT_EQ(replaced("shared/fresh"), refusal("shared/fresh"));
  EXPECT_EQ(contentOf(tree_.at("private/settings")), "old");
  EXPECT_THAT(entriesOf(tree_.at("private")), ElementsAre("settings"));
  EXPECT_THAT(entriesOf(tree_.at("shared")), ElementsAre("chain", "fresh", "report", "way"));
}

TEST_F(AtomicFileLinks, a_link_of_a_third_user_in_a_closed_folder_is_not_followed) {
  give("closed/report", third);
  EXPECT_EQ(replaced("closed/report"), refusal("closed/report"));
  EXPECT_EQ(contentOf(tree_.at("private/settings")), "old");
}

TEST_F(AtomicFileLinks, links_of_the_user_and_of_the_owner_of_the_folder_are_followed) {
  give("shared/report", nobody);
  EXPECT_EQ(replaced("shared/report"), "");
  EXPECT_EQ(contentOf(tree_.at("private/settings")), "new");
  EXPECT_EQ(replaced("shared/fresh"), "");
  EXPECT_EQ(contentOf(tree_.at("private/fresh")), "new");
}

TEST_F(AtomicFileLinks, the_owner_of_each_link_in_a_chain_is_checked) {
  give("shared/chain", nobody);
  give("shared/report", third);
  EXPECT_EQ(replaced("shared/chain"), refusal("shared/chain"));
  EXPECT_EQ(contentOf(tree_.at("private/settings")), "old");
  give("shared/report", nobody);
  EXPECT_EQ(replaced("shared/chain"), "");
  EXPECT_EQ(contentOf(tree_.at("private/settings")), "new");
}

TEST_F(AtomicFileLinks, a_folder_link_of_a_third_user_in_the_path_is_not_followed) {
  give("shared/way", third);
  EXPECT_EQ(replaced("shared/way/settings"), refusal("shared/way/settings"));
  EXPECT_EQ(contentOf(tree_.at("private/settings")), "old");
  give("shared/way", nobody);
  EXPECT_EQ(replaced("shared/way/settings"), "");
}

TEST_F(AtomicFileLinks, a_folder_link_of_a_third_user_in_a_closed_folder_is_not_followed) {
  give("closed/way", third);
  EXPECT_EQ(replaced("closed/way/settings"), refusal("closed/way/settings"));
  EXPECT_EQ(contentOf(tree_.at("private/settings")), "old");
  give("closed/way", nobody);
  EXPECT_EQ(replaced("closed/way/settings"), "");
  EXPECT_EQ(contentOf(tree_.at("private/settings")), "new");
}

TEST_F(AtomicFileLinks, reading_and_setting_aside_do_not_follow_a_link_of_a_third_user) {
  give("shared/report", third);
  EXPECT_EQ(asOtherUser([&]() -> std::string {
              const Result<std::string> found = AtomicFile::read(tree_.at("shared/report"), 100);
              if (found) return "read";
              const Result<std::string> moved =
                  AtomicFile::setAside(tree_.at("shared/report"), ".old");
              if (moved) return "moved";
              return found.error().code == EACCES && moved.error().code == EACCES ? "" : "other";
            }),
            "");
  EXPECT_THAT(entriesOf(tree_.at("private")), ElementsAre("settings"));
}

TEST(AtomicFileOwnLinks, links_in_the_path_are_resolved_as_the_system_resolves_them) {
  const TempTree tree("a/\n  b/\n    c/\n");
  fs::create_directory_symlink("b/./c//", tree.at("a/relative"));
  fs::create_directory_symlink(tree.at("a"), tree.at("a/b/absolute"));
  fs::create_symlink("../relative/../c/file", tree.at("a/b/last"));
  for (const char* name : {"a/relative/file", "a/b/absolute/b/last", "a/b/../b/c/./file"}) {
    ASSERT_TRUE(AtomicFile::replace(tree.at(name), name, AtomicFile::Durability::cached,
                                    AtomicFile::Access::usual))
        << name;
    EXPECT_EQ(contentOf(tree.at("a/b/c/file")), name);
    EXPECT_EQ(AtomicFile::read(tree.at(name), 100).value(), name);
  }
  EXPECT_THAT(entriesOf(tree.at("a/b/c")), ElementsAre("file"));
}

}  // namespace
}  // namespace tessaly
