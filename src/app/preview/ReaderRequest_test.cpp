#include "app/preview/ReaderRequest.h"

#include <gtest/gtest.h>
#include <string>

namespace tessaly {
namespace {

using Wanted = ReaderRequest::Wanted;

ReaderRequest sample() {
  ReaderRequest request{.wanted = Wanted::imageIfOne,
                        .format = "tga",
                        .path = std::string("/a\0\xFF", 4),
                        .identity = {.device = 1, .inode = 2, .created = 3},
                        .limits = {}};
  request.limits.pixels = {30, 40};
  request.limits.seconds = 0.5;
  return request;
}

TEST(ReaderRequest, a_request_is_decoded_as_encoded) {
  const std::string bytes = *sample().encoded();
  EXPECT_EQ(ReaderRequest::lengthOf(bytes), bytes.size());
  const auto request = ReaderRequest::decoded(bytes);
  ASSERT_TRUE(request.has_value());
  EXPECT_EQ(request->wanted, Wanted::imageIfOne);
  EXPECT_EQ(request->format, "tga");
  EXPECT_EQ(request->path, sample().path);
  EXPECT_EQ(request->identity, sample().identity);
  EXPECT_EQ(request->limits.pixels, QSize(30, 40));
  EXPECT_EQ(request->limits.seconds, 0.5);
}

TEST(ReaderRequest, a_truncated_or_extended_request_is_invalid) {
  const std::string bytes = *sample().encoded();
  for (std::size_t length = 0; length < bytes.size(); ++length) {
    EXPECT_FALSE(ReaderRequest::decoded(bytes.substr(0, length)).has_value()) << length;
  }
  EXPECT_FALSE(ReaderRequest::decoded(bytes + "x").has_value());
}

TEST(ReaderRequest, the_beginning_of_a_request_has_its_length) {
  const std::string bytes = *sample().encoded();
  EXPECT_EQ(ReaderRequest::lengthOf(bytes.substr(0, 8)), std::nullopt);
  EXPECT_EQ(ReaderRequest::lengthOf(bytes.substr(0, bytes.size() - 1)), bytes.size());
  EXPECT_EQ(ReaderRequest::lengthOf(std::string(500, '\0')), 0U);
  EXPECT_EQ(ReaderRequest::lengthOf(std::string(500, '\xFF')), 0U);
}

TEST(ReaderRequest, a_request_has_a_greatest_length) {
  ReaderRequest request = sample();
  request.path = std::string(ReaderRequest::mostBytes, '/');
  EXPECT_FALSE(request.encoded().has_value());
  request.path.resize(ReaderRequest::mostBytes - 1000);
  EXPECT_TRUE(request.encoded().has_value());
}

}  // namespace
}  // namespace tessaly
