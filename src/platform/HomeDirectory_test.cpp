#include "platform/HomeDirectory.h"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

namespace tessaly {
namespace {

namespace fs = std::filesystem;

// Uses a resolved folder of its own for each test.
class HomeDirectoryFrom : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = (fs::canonical(fs::temp_directory_path()) / "home-XXXXXX").string();
    ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
    folder_ = pattern;
  }
  void TearDown() override { fs::remove_all(folder_); }

  fs::path folder_;
};

TEST_F(HomeDirectoryFrom, the_environment_takes_precedence_over_the_account) {
  fs::create_directory(folder_ / "a");
  fs::create_directory(folder_ / "b");
  EXPECT_EQ(homeDirectoryFrom((folder_ / "a").c_str(), folder_ / "b"), folder_ / "a");
}

TEST_F(HomeDirectoryFrom, links_anywhere_in_the_path_are_resolved) {
  fs::create_directories(folder_ / "real" / "user");
  fs::create_directory_symlink("real", folder_ / "link");
  fs::create_directory_symlink(folder_ / "link" / "user", folder_ / "home");
  const fs::path target = folder_ / "real" / "user";
  EXPECT_EQ(homeDirectoryFrom((folder_ / "home").c_str(), ""), target);
  EXPECT_EQ(homeDirectoryFrom((folder_ / "link" / "user").c_str(), ""), target);
  EXPECT_EQ(homeDirectoryFrom(nullptr, folder_ / "home"), target);
}

TEST_F(HomeDirectoryFrom, superfluous_slashes_and_dots_are_removed) {
  fs::create_directory(folder_ / "a");
  EXPECT_EQ(homeDirectoryFrom((folder_.string() + "//a/../a/.//").c_str(), ""), folder_ / "a");
}

TEST_F(HomeDirectoryFrom, a_missing_empty_or_relative_variable_is_ignored) {
  EXPECT_EQ(homeDirectoryFrom(nullptr, folder_), folder_);
  EXPECT_EQ(homeDirectoryFrom("", folder_), folder_);
  EXPECT_EQ(homeDirectoryFrom(".", folder_), folder_);
  EXPECT_EQ(homeDirectoryFrom("home/user", folder_), folder_);
}

TEST_F(HomeDirectoryFrom, a_path_that_does_not_exist_is_kept) {
  EXPECT_EQ(homeDirectoryFrom((folder_ / "gone" / "").c_str(), ""), folder_ / "gone");
}

TEST_F(HomeDirectoryFrom, bytes_that_are_not_utf8_are_kept) {
  const std::string path = folder_.string() + "/h\xff\xfe";
  fs::create_directory(path);
  EXPECT_EQ(homeDirectoryFrom(path.c_str(), ""), path);
}

TEST_F(HomeDirectoryFrom, the_home_is_the_root_if_none_is_known) {
  EXPECT_EQ(homeDirectoryFrom(nullptr, ""), "/");
  EXPECT_EQ(homeDirectoryFrom("relative", "relative"), "/");
  EXPECT_EQ(homeDirectoryFrom("///", ""), "/");
}

TEST(HomeDirectory, the_home_stays_the_same_when_the_environment_changes) {
  const std::string before = homeDirectory();
  EXPECT_TRUE(before.starts_with('/'));
  const char* old = std::getenv("HOME");
  const std::string kept = old != nullptr ? old : "";
  ::setenv("HOME", "/nowhere", 1);
  EXPECT_EQ(homeDirectory(), before);
  if (old != nullptr) {
    ::setenv("HOME", kept.c_str(), 1);
  } else {
    ::unsetenv("HOME");
  }
}

}  // namespace
}  // namespace tessaly
