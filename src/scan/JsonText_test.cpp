#include "scan/JsonText.h"

#include <gtest/gtest.h>
#include <random>
#include <simdjson.h>
#include <string>

namespace tessaly {
namespace {

using namespace std::string_literals;

std::string escaped(std::string_view bytes) {
  std::string json;
  JsonText::appendEscaped(json, bytes);
  return json;
}

// Escapes, parses with a real parser, and decodes.
std::string roundTrip(std::string_view bytes) {
  simdjson::dom::parser parser;
  std::string_view text;
  const std::string json = '"' + escaped(bytes) + '"';
  const simdjson::error_code error = parser.parse(json).get(text);
  EXPECT_EQ(error, simdjson::SUCCESS) << json;
  return JsonText::bytesOf(text);
}

TEST(JsonText, plain_text_is_not_escaped) {
  EXPECT_EQ(escaped(""), "");
  EXPECT_EQ(escaped("/Users/me/Library"), "/Users/me/Library");
  EXPECT_EQ(escaped("文件 ملف 🎬 é"), "文件 ملف 🎬 é");
  EXPECT_EQ(escaped("\x7f"), "\x7f");
}

TEST(JsonText, quotes_backslashes_and_control_characters_are_escaped) {
  EXPECT_EQ(escaped("a\"b\\c"), "a\\\"b\\\\c");
  EXPECT_EQ(escaped("\b\f\n\r\t"), "\\b\\f\\n\\r\\t");
  EXPECT_EQ(escaped("\0\x01\x1f"s), "\\u0000\\u0001\\u001f");
}

TEST(JsonText, a_byte_that_is_not_utf8_becomes_a_private_character) {
  EXPECT_EQ(escaped("\x80"), "\U0010FF80");
  EXPECT_EQ(escaped("caf\xe9"), "caf\U0010FFE9");
  EXPECT_EQ(escaped("\xff"), "\U0010FFFF");
  EXPECT_EQ(escaped("\xe2\x82"), "\U0010FFE2\U0010FF82");
  EXPECT_EQ(escaped("\xed\xa0\x80"), "\U0010FFED\U0010FFA0\U0010FF80");
}

TEST(JsonText, a_genuine_private_character_is_written_as_its_four_bytes) {
  EXPECT_EQ(escaped("\U0010FF80"), "\U0010FFF4\U0010FF8F\U0010FFBE\U0010FF80");
  EXPECT_EQ(escaped("\U0010FF7F"), "\U0010FF7F");
}

TEST(JsonText, every_single_byte_survives_a_round_trip) {
  for (int byte = 0; byte < 256; ++byte) {
    const std::string bytes = "a"s + static_cast<char>(byte) + "b";
    EXPECT_EQ(roundTrip(bytes), bytes) << byte;
  }
  for (const std::string& text : {"\U0010FF7F"s, "\U0010FF80"s, "\U0010FFBF"s, "\U0010FFC0"s,
                                  "\U0010FFFF"s, "\U0010F000"s, "\xF4\x8F"s, "\xF4\x8F\xBE"s}) {
    EXPECT_EQ(roundTrip(text), text);
  }
}

TEST(JsonText, random_bytes_survive_a_round_trip) {
  std::mt19937 random(11);
  const std::string alphabet = "a/\"\\\n\xF4\x8F\xBE\xBF\x80\xE2\x82\xAC\xED\xA0\xC3"s;
  for (int round = 0; round < 5000; ++round) {
    std::string bytes;
    for (auto length = random() % 12; length > 0; --length) {
      bytes +=
          random() % 4 == 0 ? static_cast<char>(random()) : alphabet[random() % alphabet.size()];
    }
    ASSERT_EQ(roundTrip(bytes), bytes);
  }
}

TEST(JsonText, reading_never_goes_past_the_end) {
  for (const std::string& cut : {"\xF4\x8F"s, "\xF4\x8F\xBE"s}) {
    EXPECT_EQ(JsonText::bytesOf(cut), cut);
  }
}

}  // namespace
}  // namespace tessaly
