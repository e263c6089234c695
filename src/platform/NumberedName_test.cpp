#include "platform/NumberedName.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

TEST(NumberedName, stands_before_the_extension) {
  EXPECT_EQ(numberedName("out.zip", 2), "out 2.zip");
  EXPECT_EQ(numberedName("out.tar.zip", 10), "out.tar 10.zip");
}

TEST(NumberedName, of_the_first_is_the_name_itself) {
  EXPECT_EQ(numberedName("out.zip", 1), "out.zip");
}

TEST(NumberedName, stands_at_the_end_where_there_is_no_extension) {
  EXPECT_EQ(numberedName("out", 2), "out 2");
  EXPECT_EQ(numberedName(".zip", 2), ".zip 2");
}

TEST(NumberedName, keeps_to_what_a_name_may_be_long) {
  EXPECT_EQ(numberedName(std::string(251, 'x') + ".zip", 2), std::string(249, 'x') + " 2.zip");
  // The last character has two bytes, of which only one would fit.
  EXPECT_EQ(numberedName(std::string(248, 'x') + "\xc3\xa9.zip", 2),
            std::string(248, 'x') + " 2.zip");
  EXPECT_EQ(numberedName("x." + std::string(253, 'y'), 2), "x 2");
}

}  // namespace
}  // namespace tessaly
