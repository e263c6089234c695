#include "platform/FileUri.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

TEST(FileUri, letters_digits_and_slashes_are_kept) {
  EXPECT_EQ(fileUri("/home/ada/a-b_c.d~1"), "file:///home/ada/a-b_c.d~1");
}

TEST(FileUri, blanks_percent_signs_and_reserved_characters_are_escaped) {
  EXPECT_EQ(fileUri("/a b%20?#&"), "file:///a%20b%2520%3F%23%26");
}

TEST(FileUri, bytes_that_are_not_utf8_are_escaped) {
  EXPECT_EQ(fileUri("/caf\xe9\n"), "file:///caf%E9%0A");
}

TEST(FileUri, each_byte_of_a_multibyte_character_is_escaped) {
  EXPECT_EQ(fileUri("/\xc3\xa9"), "file:///%C3%A9");
}

}  // namespace
}  // namespace tessaly
