#include "scan/PathName.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

TEST(LastPathComponent, the_last_component_is_the_text_after_the_last_slash) {
  EXPECT_EQ(lastPathComponent("/home/user/film.mkv"), "film.mkv");
  EXPECT_EQ(lastPathComponent("/home"), "home");
  EXPECT_EQ(lastPathComponent("/home/__rest__"), "__rest__");
}

TEST(LastPathComponent, slashes_at_the_end_do_not_count) {
  EXPECT_EQ(lastPathComponent("/home/user/"), "user");
  EXPECT_EQ(lastPathComponent("/home/user///"), "user");
  EXPECT_EQ(lastPathComponent("/home//user"), "user");
  EXPECT_EQ(lastPathComponent("user/"), "user");
}

TEST(LastPathComponent, the_last_component_of_the_root_is_a_slash) {
  EXPECT_EQ(lastPathComponent("/"), "/");
  EXPECT_EQ(lastPathComponent("//"), "/");
}

TEST(LastPathComponent, a_path_without_slashes_is_its_own_last_component) {
  EXPECT_EQ(lastPathComponent("user"), "user");
  EXPECT_EQ(lastPathComponent("."), ".");
  EXPECT_EQ(lastPathComponent("/home/.."), "..");
}

TEST(LastPathComponent, an_empty_path_has_an_empty_component) {
  EXPECT_EQ(lastPathComponent(""), "");
}

TEST(LastPathComponent, a_component_keeps_blanks_and_bytes_that_are_not_utf8) {
  EXPECT_EQ(lastPathComponent("/home/caf\xe9\n /"), "caf\xe9\n ");
}

}  // namespace
}  // namespace tessaly
