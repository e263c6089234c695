#include "scan/Base64.h"

#include <gtest/gtest.h>
#include <string>

namespace tessaly {
namespace {

using namespace std::string_literals;

struct Pair {
  std::string bytes;
  std::string text;
};

// The examples of RFC 4648, section 10, and one with both characters that are neither letter nor
// digit.
const Pair pairs[] = {{"", ""},
                      {"f", "Zg=="},
                      {"fo", "Zm8="},
                      {"foo", "Zm9v"},
                      {"foob", "Zm9vYg=="},
                      {"fooba", "Zm9vYmE="},
                      {"foobar", "Zm9vYmFy"},
                      {"\xfb\xff\xfe", "+//+"},
                      {"\0"s, "AA=="},
                      {"\0\0\0\0"s, "AAAAAA=="}};

TEST(Base64, writes_and_reads_the_known_pairs) {
  for (const Pair& pair : pairs) {
    EXPECT_EQ(Base64::encode(pair.bytes), pair.text);
    EXPECT_EQ(Base64::decode(pair.text), pair.bytes) << pair.text;
  }
}

TEST(Base64, decoding_gives_back_any_bytes) {
  std::string bytes;
  for (int k = 0; k < 600; ++k) {
    EXPECT_EQ(Base64::decode(Base64::encode(bytes)), bytes) << k;
    bytes += static_cast<char>(k * 37);
  }
}

TEST(Base64, decoding_refuses_text_that_encoding_cannot_write) {
  for (const std::string& text :
       {"="s,    "=="s,     "==="s,   "===="s,  "A"s,          "AA"s,       "AAA"s,  "AA="s,
        "A==="s, "AA==="s,  "AAA=="s, "AAAA="s, "AAAA===="s,   "AA==AA=="s, "AB=="s, "AAB="s,
        "A A="s, "AAAA\n"s, "AA-_"s,  "AAA\0"s, "\xc3\xa9=="s, "AAAAA"s,    "A=AA"s, "=AAA"s}) {
    EXPECT_EQ(Base64::decode(text), std::nullopt) << text;
  }
}

}  // namespace
}  // namespace tessaly
