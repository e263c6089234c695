#include "app/quicklook/PathOfFileUri.h"

#include <gtest/gtest.h>

#include "platform/FileUri.h"

namespace tessaly {
namespace {

TEST(PathOfFileUri, gives_back_every_byte_that_a_path_may_hold) {
  std::string path = "/";
  for (int byte = 1; byte < 256; ++byte) path += static_cast<char>(byte);
  EXPECT_EQ(pathOfFileUri(fileUri(path)), path);
}

TEST(PathOfFileUri, knows_the_root) {
  EXPECT_EQ(pathOfFileUri("file:///"), "/");
}

TEST(PathOfFileUri, reads_escapes_in_small_letters_too) {
  EXPECT_EQ(pathOfFileUri("file:///caf%c3%a9"), "/caf\xc3\xa9");
}

TEST(PathOfFileUri, has_no_path_for_what_is_no_file_here) {
  for (const char* uri : {"", "/a", "file:", "file://", "file://host/a", "http:///a", "FILE"})
    EXPECT_EQ(pathOfFileUri(uri), std::nullopt) << uri;
}

TEST(PathOfFileUri, has_no_path_for_a_broken_escape) {
  for (const char* uri : {"file:///%", "file:///%4", "file:///a%zz", "file:///%4z", "file:///%-1"})
    EXPECT_EQ(pathOfFileUri(uri), std::nullopt) << uri;
}

TEST(PathOfFileUri, has_no_path_for_a_zero_byte) {
  EXPECT_EQ(pathOfFileUri("file:///a%00b"), std::nullopt);
}

}  // namespace
}  // namespace tessaly
