#include "scan/PathName.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

TEST(LastPathComponent, is_what_follows_the_last_slash) {
  EXPECT_EQ(lastPathComponent("/home/user/film.mkv"), "film.mkv");
  EXPECT_EQ(lastPathComponent("/home"), "home");
  EXPECT_EQ(lastPathComponent("/home/__rest__"), "__rest__");
}

TEST(LastPathComponent, does_not_count_slashes_at_the_end) {
  EXPECT_EQ(lastPathComponent("/home/user/"), "user");
  EXPECT_EQ(lastPathComponent("/home/user///"), "user");
  EXPECT_EQ(lastPathComponent("/home//user"), "user");
  EXPECT_EQ(lastPathComponent("user/"), "user");
}

TEST(LastPathComponent, of_the_root_of_the_disk_is_a_slash) {
  EXPECT_EQ(lastPathComponent("/"), "/");
  EXPECT_EQ(lastPathComponent("//"), "/");
}

TEST(LastPathComponent, of_a_path_without_slashes_is_that_path) {
  EXPECT_EQ(lastPathComponent("user"), "user");
  EXPECT_EQ(lastPathComponent("."), ".");
  EXPECT_EQ(lastPathComponent("/home/.."), "..");
}

TEST(LastPathComponent, of_an_empty_path_is_empty) {
  EXPECT_EQ(lastPathComponent(""), "");
}

TEST(LastPathComponent, keeps_bytes_that_are_not_utf8_and_blanks) {
  EXPECT_EQ(lastPathComponent("/home/caf\xe9\n /"), "caf\xe9\n ");
}

}  // namespace
}  // namespace tessaly
