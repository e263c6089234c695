#include "platform/FileUri.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

TEST(FileUri, keeps_letters_digits_and_slashes) {
  EXPECT_EQ(fileUri("/home/ada/a-b_c.d~1"), "file:///home/ada/a-b_c.d~1");
}

TEST(FileUri, escapes_blanks_percent_signs_and_what_parts_a_uri) {
  EXPECT_EQ(fileUri("/a b%20?#&"), "file:///a%20b%2520%3F%23%26");
}

TEST(FileUri, carries_the_bytes_of_a_name_that_is_not_text) {
  EXPECT_EQ(fileUri("/caf\xe9\n"), "file:///caf%E9%0A");
}

TEST(FileUri, escapes_each_byte_of_a_longer_character) {
  EXPECT_EQ(fileUri("/\xc3\xa9"), "file:///%C3%A9");
}

}  // namespace
}  // namespace tessaly
