#include "app/preview/TextDecoding.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace tessaly {
namespace {

using namespace std::string_literals;

// The text of a whole file; empty if it is not a text.
std::u16string whole(const std::string& bytes, const TextDecoding::Limits& limits = {}) {
  const auto text = TextDecoding::decoded(bytes, true, limits);
  return text ? text->units : u"no text";
}

std::u16string cut(const std::string& bytes) {
  const auto text = TextDecoding::decoded(bytes, false, {});
  if (!text) return u"no text";
  EXPECT_FALSE(text->isWhole);
  return text->units;
}

TEST(TextDecoding, utf_8_is_decoded) {
  EXPECT_EQ(whole("Gr\xC3\xBC\xC3\x9F \xF0\x9F\x8C\xB3"), u"Grüß \U0001F333");
  EXPECT_EQ(whole("\xEF\xBB\xBFmarked"), u"marked");
}

TEST(TextDecoding, no_bytes_are_an_empty_text) {
  const auto text = TextDecoding::decoded("", true, {});
  ASSERT_TRUE(text.has_value());
  EXPECT_EQ(text->units, u"");
  EXPECT_TRUE(text->isWhole);
}

TEST(TextDecoding, utf_16_and_utf_32_are_decoded_by_their_marks) {
  EXPECT_EQ(whole("\xFF\xFEG\0\xFC\0<\xD8\x33\xDF"s), u"Gü\U0001F333");
  EXPECT_EQ(whole("\xFE\xFF\0G\0\xFC\xD8<\xDF\x33"s), u"Gü\U0001F333");
  EXPECT_EQ(whole("\xFF\xFE\0\0G\0\0\0\x33\xF3\1\0"s), u"G\U0001F333");
  EXPECT_EQ(whole("\0\0\xFE\xFF\0\0\0G\0\1\xF3\x33"s), u"G\U0001F333");
}

TEST(TextDecoding, a_mark_alone_does_not_make_a_text) {
  EXPECT_EQ(whole("\xFF\xFE\1\0\2\0\3\0"s), u"no text");
  EXPECT_EQ(whole("\xFF\xFE\0\xD8\0\xD8\0\xD8"s), u"no text");
  std::string words = "\xFF\xFE\0\0"s;
  for (unsigned k = 1; k < 200; ++k) words += std::string("\x13\x57\x9B\xDF") + char(k * 37);
  EXPECT_EQ(whole(words), u"no text");
}

TEST(TextDecoding, invalid_utf_16_and_utf_32_is_replaced) {
  const std::string nine("1\0002\0003\0004\0005\0006\0007\0008\0009\0", 18);
  // A second surrogate alone, a first one alone, and half a unit at the end.
  EXPECT_EQ(whole("\xFF\xFE" + nine +
                  "\0\xDC"
                  "x\0"s),
            u"123456789\uFFFDx");
  EXPECT_EQ(whole("\xFF\xFE" + nine +
                  "\0\xD8"
                  "x\0"s),
            u"123456789\uFFFDx");
  EXPECT_EQ(whole("\xFF\xFE" + nine + "\0\xD8"s), u"123456789\uFFFD");
  EXPECT_EQ(whole("\xFF\xFE" + nine + "x"), u"123456789\uFFFD");
  std::string wide;
  for (const char digit : "123456789"s) wide += "\0\0\0"s + digit;
  EXPECT_EQ(whole("\0\0\xFE\xFF"s + wide + "\0\0\xD8\0"s), u"123456789\uFFFD");
  EXPECT_EQ(whole("\0\0\xFE\xFF"s + wide + "\0\0\0"s), u"123456789\uFFFD");
}

TEST(TextDecoding, the_mark_is_dropped_at_the_beginning_only) {
  EXPECT_EQ(whole("\xEF\xBB\xBF\xEF\xBB\xBF.."), u"\uFEFF..");
  EXPECT_EQ(whole("\xFF\xFE\xFF\xFE.\0.\0"s), u"\uFEFF..");
}

TEST(TextDecoding, letters_that_are_not_utf_8_are_windows_1252) {
  EXPECT_EQ(whole("Gr\xFC\xDF\x65, caf\xE9"), u"Grüße, café");
  EXPECT_EQ(whole("\x93quoted\x94 for 5 \x80"), u"“quoted” for 5 €");
}

TEST(TextDecoding, utf_8_with_few_errors_stays_utf_8) {
  EXPECT_EQ(whole("ÄÖÜäöüß and \xFF more"), u"ÄÖÜäöüß and \uFFFD more");
}

TEST(TextDecoding, binary_data_is_not_a_text) {
  EXPECT_EQ(whole("zero\0inside"s), u"no text");
  std::string all;
  for (int byte = 1; byte < 256; ++byte) all += static_cast<char>(byte);
  EXPECT_EQ(whole(all), u"no text");
  EXPECT_EQ(whole("\xC0\xC1\xF5\xFE\xE0\xE1\xE2 a"), u"no text");
  EXPECT_EQ(whole("\1\2\3\4 control"), u"no text");
}

TEST(TextDecoding, an_incomplete_character_at_the_end_is_dropped) {
  EXPECT_EQ(cut("tree \xF0\x9F\x8C"), u"tree ");
  EXPECT_EQ(cut("tree \xF0"), u"tree ");
  EXPECT_EQ(cut("caf\xC3"), u"caf");
  EXPECT_EQ(cut("\xFF\xFEG\0<\xD8"s), u"G");
  EXPECT_EQ(cut("\xFF\xFEG\0\xFC"s), u"G");
  EXPECT_EQ(cut("whole \xC3\xBC"), u"whole ü");
}

TEST(TextDecoding, an_invalid_character_at_the_end_is_kept) {
  // No character continues like this, so it was not cut by the end.
  EXPECT_EQ(cut("äöüÄÖÜ \xE2z"), u"äöüÄÖÜ \uFFFDz");
  EXPECT_EQ(whole("äöüÄ\xE2"), u"äöüÄ\uFFFD");
}

TEST(TextDecoding, every_line_ends_in_a_line_feed) {
  EXPECT_EQ(whole("a\r\nb\rc\nd\r\r\n"), u"a\nb\nc\nd\n\n");
  EXPECT_EQ(whole("a\u2028b\u2029c\u0085d"), u"a\nb\nc\nd");
}

TEST(TextDecoding, control_characters_are_shown_as_pictures) {
  EXPECT_EQ(whole("a few \x1B[31m red \b words\t\x7F and more text"),
            u"a few \u241B[31m red \u2408 words\t\u2421 and more text");
  EXPECT_EQ(whole("\xFF\xFEz\0e\0r\0o\0 \0\0\0 \0a\0m\0o\0n\0g\0 \0t\0e\0n\0"s),
            u"zero \u2400 among ten");
}

// Some of these have a special meaning in views.
TEST(TextDecoding, characters_that_are_invalid_in_text_are_replaced) {
  EXPECT_EQ(whole("some text \uFDD0 with \uFFFE these in it"),
            u"some text \uFFFD with \uFFFD these in it");
  EXPECT_EQ(whole("and \uFFFD itself"), u"and \uFFFD itself");
  EXPECT_EQ(whole("and with \u009F these"), u"and with \uFFFD these");
}

TEST(TextDecoding, a_long_line_continues_on_the_next) {
  const TextDecoding::Limits limits = {.lines = 100, .lineLength = 4};
  EXPECT_EQ(whole("abcd\nabcdefghi", limits), u"abcd\nabcd\nefgh\ni");
  // A surrogate pair is not split.
  EXPECT_EQ(whole("abc\U0001F333", limits), u"abc\n\U0001F333");
}

TEST(TextDecoding, decoding_stops_after_enough_lines) {
  const TextDecoding::Limits limits = {.lines = 2, .lineLength = 100};
  const auto three = TextDecoding::decoded("1\n2\n3\n", true, limits);
  ASSERT_TRUE(three.has_value());
  EXPECT_EQ(three->units, u"1\n2\n");
  EXPECT_FALSE(three->isWhole);
  const auto two = TextDecoding::decoded("1\r\n2\r\n", true, limits);
  ASSERT_TRUE(two.has_value());
  EXPECT_EQ(two->units, u"1\n2\n");
  EXPECT_TRUE(two->isWhole);
}

}  // namespace
}  // namespace tessaly
