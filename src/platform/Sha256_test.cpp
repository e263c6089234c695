#include "platform/Sha256.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace tessaly {
namespace {

std::string digestOf(std::string_view text) {
  Sha256 hash;
  hash.add(text);
  return hash.finish().value_or("failed");
}

// The examples of the standard.
TEST(Sha256, known_messages_have_their_known_digests) {
  EXPECT_EQ(digestOf(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
  EXPECT_EQ(digestOf("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
  EXPECT_EQ(digestOf("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
            "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
}

TEST(Sha256, the_parts_in_which_the_bytes_come_do_not_matter) {
  const std::string text(1'000'000, 'a');
  Sha256 hash;
  for (std::size_t at = 0, part = 1; at < text.size(); at += part, part = part * 3 + 1)
    hash.add(std::string_view(text).substr(at, part));
  EXPECT_EQ(hash.finish(), "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

TEST(Sha256, zeros_that_do_not_exist_count_like_zeros_that_do) {
  for (const std::size_t count : {0, 1, 16383, 16384, 16385, 100'000}) {
    Sha256 hash;
    hash.add(std::string_view("begin"));
    hash.addZeros(count);
    hash.add(std::string_view("end"));
    EXPECT_EQ(hash.finish(), digestOf("begin" + std::string(count, '\0') + "end")) << count;
  }
}

TEST(Sha256, two_digests_under_way_are_independent) {
  Sha256 one;
  Sha256 two;
  one.add(std::string_view("a"));
  two.add(std::string_view("xyz"));
  one.add(std::string_view("bc"));
  Sha256 moved = std::move(one);
  EXPECT_EQ(moved.finish(), digestOf("abc"));
  EXPECT_EQ(two.finish(), digestOf("xyz"));
}

}  // namespace
}  // namespace tessaly
