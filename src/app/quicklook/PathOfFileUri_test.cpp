#include "app/quicklook/PathOfFileUri.h"

#include <gtest/gtest.h>

#include "platform/FileUri.h"

namespace tessaly {
namespace {

TEST(PathOfFileUri, every_byte_of_a_path_is_restored) {
  std::string path = "/";
  for (int byte = 1; byte < 256; ++byte) path += static_cast<char>(byte);
  EXPECT_EQ(pathOfFileUri(fileUri(path)), path);
}

TEST(PathOfFileUri, the_root_has_a_path) {
  EXPECT_EQ(pathOfFileUri("file:///"), "/");
}

TEST(PathOfFileUri, escapes_in_lower_case_are_decoded) {
  EXPECT_EQ(pathOfFileUri("file:///caf%c3%a9"), "/caf\xc3\xa9");
}

TEST(PathOfFileUri, a_uri_of_another_scheme_or_host_has_no_path) {
  for (const char* uri : {"", "/a", "file:", "file://", "file://host/a", "http:///a", "FILE"})
    EXPECT_EQ(pathOfFileUri(uri), std::nullopt) << uri;
}

TEST(PathOfFileUri, a_broken_escape_has_no_path) {
  for (const char* uri : {"file:///%", "file:///%4", "file:///a%zz", "file:///%4z", "file:///%-1"})
    EXPECT_EQ(pathOfFileUri(uri), std::nullopt) << uri;
}

TEST(PathOfFileUri, a_zero_byte_has_no_path) {
  EXPECT_EQ(pathOfFileUri("file:///a%00b"), std::nullopt);
}

}  // namespace
}  // namespace tessaly
