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

// "host path" or "damaged".
std::string locationOf(const std::string& uri) {
  const std::optional<FileLocation> location = locationOfFileUri(uri);
  return location ? location->host + " " + location->path : "damaged";
}

TEST(FileUri, its_path_and_host_are_read) {
  EXPECT_EQ(locationOf("file:///a%20b%2520%E9"), " /a b%20\xe9");
  EXPECT_EQ(locationOf("file:/a"), " /a");
  EXPECT_EQ(locationOf("FILE://server/a/b"), "server /a/b");
  EXPECT_EQ(locationOf("file:///a b\xff"), " /a b\xff");
}

TEST(FileUri, a_query_or_a_fragment_is_no_part_of_the_path) {
  EXPECT_EQ(locationOf("file:///a?b=/c#d"), " /a");
  EXPECT_EQ(locationOf("file:///a#d"), " /a");
}

TEST(FileUri, a_damaged_one_names_nothing) {
  for (const char* uri : {"", "file", "file:", "file://", "file:a", "file://server", "files:///a",
                          "http://a/b", "file:///%", "file:///%1", "file:///%1g", "file:///%00"}) {
    EXPECT_EQ(locationOf(uri), "damaged") << uri;
  }
}

TEST(FileUri, the_scheme_has_no_case) {
  EXPECT_TRUE(isFileUri("FiLe:"));
  EXPECT_FALSE(isFileUri("file"));
  EXPECT_FALSE(isFileUri("files:"));
  EXPECT_FALSE(isFileUri(" file:"));
}

}  // namespace
}  // namespace tessaly
