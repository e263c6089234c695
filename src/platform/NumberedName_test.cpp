#include "platform/NumberedName.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

TEST(NumberedName, the_number_comes_before_the_extension) {
  EXPECT_EQ(numberedName("out.zip", 2), "out 2.zip");
  EXPECT_EQ(numberedName("out.tar.zip", 10), "out.tar 10.zip");
}

TEST(NumberedName, the_first_name_has_no_number) {
  EXPECT_EQ(numberedName("out.zip", 1), "out.zip");
}

TEST(NumberedName, the_number_comes_last_in_a_name_without_an_extension) {
  EXPECT_EQ(numberedName("out", 2), "out 2");
  EXPECT_EQ(numberedName(".zip", 2), ".zip 2");
}

TEST(NumberedName, a_numbered_name_is_cut_to_the_maximum_length) {
  EXPECT_EQ(numberedName(std::string(251, 'x') + ".zip", 2), std::string(249, 'x') + " 2.zip");
  // The last character has two bytes, of which only one would fit.
  EXPECT_EQ(numberedName(std::string(248, 'x') + "\xc3\xa9.zip", 2),
            std::string(248, 'x') + " 2.zip");
  EXPECT_EQ(numberedName("x." + std::string(253, 'y'), 2), "x 2");
}

}  // namespace
}  // namespace tessaly
