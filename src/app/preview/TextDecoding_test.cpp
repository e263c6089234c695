#include "app/preview/TextDecoding.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace tessaly {
namespace {

using namespace std::string_literals;

// What becomes of a whole file; nothing for none.
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

TEST(TextDecoding, reads_utf_8) {
  EXPECT_EQ(whole("Gr\xC3\xBC\xC3\x9F \xF0\x9F\x8C\xB3"), u"Grüß \U0001F333");
  EXPECT_EQ(whole("\xEF\xBB\xBFmarked"), u"marked");
}

TEST(TextDecoding, reads_nothing_as_an_empty_text) {
  const auto text = TextDecoding::decoded("", true, {});
  ASSERT_TRUE(text.has_value());
  EXPECT_EQ(text->units, u"");
  EXPECT_TRUE(text->isWhole);
}

TEST(TextDecoding, reads_utf_16_and_utf_32_by_their_marks) {
  EXPECT_EQ(whole("\xFF\xFEG\0\xFC\0<\xD8\x33\xDF"s), u"Gü\U0001F333");
  EXPECT_EQ(whole("\xFE\xFF\0G\0\xFC\xD8<\xDF\x33"s), u"Gü\U0001F333");
  EXPECT_EQ(whole("\xFF\xFE\0\0G\0\0\0\x33\xF3\1\0"s), u"G\U0001F333");
  EXPECT_EQ(whole("\0\0\xFE\xFF\0\0\0G\0\1\xF3\x33"s), u"G\U0001F333");
}

TEST(TextDecoding, does_not_take_every_file_with_a_mark_for_a_text) {
  EXPECT_EQ(whole("\xFF\xFE\1\0\2\0\3\0"s), u"no text");
  EXPECT_EQ(whole("\xFF\xFE\0\xD8\0\xD8\0\xD8"s), u"no text");
  std::string words = "\xFF\xFE\0\0"s;
  for (unsigned k = 1; k < 200; ++k) words += std::string("\x13\x57\x9B\xDF") + char(k * 37);
  EXPECT_EQ(whole(words), u"no text");
}

TEST(TextDecoding, shows_what_is_no_character_of_utf_16_and_utf_32_as_such) {
  const std::string nine("1\0002\0003\0004\0005\0006\0007\0008\0009\0", 18);
  // The second half of a pair, the first without a second, and half of a unit at the end.
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

TEST(TextDecoding, shows_no_mark_but_one_that_stands_inside_the_text) {
  EXPECT_EQ(whole("\xEF\xBB\xBF\xEF\xBB\xBF.."), u"\uFEFF..");
  EXPECT_EQ(whole("\xFF\xFE\xFF\xFE.\0.\0"s), u"\uFEFF..");
}

TEST(TextDecoding, reads_letters_that_are_no_utf_8_as_windows_does) {
  EXPECT_EQ(whole("Gr\xFC\xDF\x65, caf\xE9"), u"Grüße, café");
  EXPECT_EQ(whole("\x93quoted\x94 for 5 \x80"), u"“quoted” for 5 €");
}

TEST(TextDecoding, keeps_utf_8_with_a_slip_in_it) {
  EXPECT_EQ(whole("ÄÖÜäöüß and \xFF more"), u"ÄÖÜäöüß and \uFFFD more");
}

TEST(TextDecoding, takes_no_binary_for_a_text) {
  EXPECT_EQ(whole("zero\0inside"s), u"no text");
  std::string all;
  for (int byte = 1; byte < 256; ++byte) all += static_cast<char>(byte);
  EXPECT_EQ(whole(all), u"no text");
  EXPECT_EQ(whole("\xC0\xC1\xF5\xFE\xE0\xE1\xE2 a"), u"no text");
  EXPECT_EQ(whole("\1\2\3\4 control"), u"no text");
}

TEST(TextDecoding, drops_what_the_end_cuts_off) {
  EXPECT_EQ(cut("tree \xF0\x9F\x8C"), u"tree ");
  EXPECT_EQ(cut("tree \xF0"), u"tree ");
  EXPECT_EQ(cut("caf\xC3"), u"caf");
  EXPECT_EQ(cut("\xFF\xFEG\0<\xD8"s), u"G");
  EXPECT_EQ(cut("\xFF\xFEG\0\xFC"s), u"G");
  EXPECT_EQ(cut("whole \xC3\xBC"), u"whole ü");
}

TEST(TextDecoding, keeps_an_end_that_only_looks_cut_off) {
  // No character goes on like this, so it is not one that the end has cut.
  EXPECT_EQ(cut("äöüÄÖÜ \xE2z"), u"äöüÄÖÜ \uFFFDz");
  EXPECT_EQ(whole("äöüÄ\xE2"), u"äöüÄ\uFFFD");
}

TEST(TextDecoding, ends_every_line_in_a_line_feed) {
  EXPECT_EQ(whole("a\r\nb\rc\nd\r\r\n"), u"a\nb\nc\nd\n\n");
  EXPECT_EQ(whole("a\u2028b\u2029c\u0085d"), u"a\nb\nc\nd");
}

TEST(TextDecoding, shows_control_characters_as_pictures) {
  EXPECT_EQ(whole("a few \x1B[31m red \b words\t\x7F and more text"),
            u"a few \u241B[31m red \u2408 words\t\u2421 and more text");
  EXPECT_EQ(whole("\xFF\xFEz\0e\0r\0o\0 \0\0\0 \0a\0m\0o\0n\0g\0 \0t\0e\0n\0"s),
            u"zero \u2400 among ten");
}

// Views give a meaning of their own to some of them.
TEST(TextDecoding, shows_what_is_no_character_as_such) {
  EXPECT_EQ(whole("some text \uFDD0 with \uFFFE these in it"),
            u"some text \uFFFD with \uFFFD these in it");
  EXPECT_EQ(whole("and \uFFFD itself"), u"and \uFFFD itself");
  EXPECT_EQ(whole("and with \u009F these"), u"and with \uFFFD these");
}

TEST(TextDecoding, continues_a_long_line_on_the_next) {
  const TextDecoding::Limits limits = {.lines = 100, .lineLength = 4};
  EXPECT_EQ(whole("abcd\nabcdefghi", limits), u"abcd\nabcd\nefgh\ni");
  // A character of two units stays whole.
  EXPECT_EQ(whole("abc\U0001F333", limits), u"abc\n\U0001F333");
}

TEST(TextDecoding, stops_after_enough_lines) {
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
