#include "platform/UnicodeText.h"

#include <gtest/gtest.h>
#include <string>

namespace tessaly {
namespace {

using namespace std::string_literals;

TEST(UnicodeTextLowercased, an_empty_text_stays_empty) {
  EXPECT_EQ(UnicodeText::lowercased(""), "");
}

TEST(UnicodeTextLowercased, only_letters_are_lowered_in_ascii_text) {
  EXPECT_EQ(UnicodeText::lowercased("Photos.APP"), "photos.app");
  EXPECT_EQ(UnicodeText::lowercased("@AZ[`az{ 09"), "@az[`az{ 09");
}

TEST(UnicodeTextLowercased, letters_of_every_script_are_lowered) {
  EXPECT_EQ(UnicodeText::lowercased("ÄÖÜ ÉCRAN"), "äöü écran");
  EXPECT_EQ(UnicodeText::lowercased("МОСКВА ΑΘΗΝΑ"), "москва αθηνα");
  EXPECT_EQ(UnicodeText::lowercased("𐐀"), "𐐨");
  EXPECT_EQ(UnicodeText::lowercased("文件 ملف 🎬"), "文件 ملف 🎬");
}

TEST(UnicodeTextLowercased, lowering_may_change_the_length) {
  EXPECT_EQ(UnicodeText::lowercased("\u0130"), "i\u0307");
  EXPECT_EQ(UnicodeText::lowercased("\u1E9E"), "\u00DF");
  EXPECT_EQ(UnicodeText::lowercased("\u212A"), "k");
}

TEST(UnicodeTextLowercased, bytes_that_are_not_utf8_are_kept) {
  EXPECT_EQ(UnicodeText::lowercased("A\xff\xc3"
                                    "B\xe2\x82"
                                    "C"),
            "a\xff\xc3"
            "b\xe2\x82"
            "c");
  EXPECT_EQ(UnicodeText::lowercased("\xed\xa0\x80X"), "\xed\xa0\x80x");  // a surrogate
  EXPECT_EQ(UnicodeText::lowercased("\xc1\x81"), "\xc1\x81");            // overlong
  EXPECT_EQ(UnicodeText::lowercased("\xf4\x90\x80\x80"), "\xf4\x90\x80\x80");
  EXPECT_EQ(UnicodeText::lowercased("A\0B"s), "a\0b"s);
}

TEST(UnicodeTextScalar, the_first_scalar_is_one_character_or_one_invalid_byte) {
  const auto isScalar = [](std::string_view text, char32_t value, std::size_t length, bool isText) {
    const UnicodeText::Scalar scalar = UnicodeText::firstScalar(text);
    return scalar.value == value && scalar.length == length && scalar.isText == isText;
  };
  EXPECT_TRUE(isScalar("az", U'a', 1, true));
  EXPECT_TRUE(isScalar("€x", U'€', 3, true));
  EXPECT_TRUE(isScalar("\U0010FFFF", U'\U0010FFFF', 4, true));
  EXPECT_TRUE(isScalar("\xef\xbf\xbe", char32_t{0xFFFE}, 3, true));
  EXPECT_TRUE(
      isScalar("\xff"
               "a",
               char32_t{0xFFFD}, 1, false));
  EXPECT_TRUE(isScalar("\xe2\x82", char32_t{0xFFFD}, 1, false));
  EXPECT_TRUE(isScalar("\x80", char32_t{0xFFFD}, 1, false));
}

TEST(UnicodeTextScalar, a_truncated_character_is_not_read_past_the_end) {
  const std::string euro = "\xe2\x82\xac";
  EXPECT_FALSE(UnicodeText::firstScalar(std::string_view(euro).substr(0, 2)).isText);
}

TEST(UnicodeTextGraphemes, combined_characters_count_as_one_grapheme) {
  EXPECT_EQ(UnicodeText::graphemeCount(""), 0U);
  EXPECT_EQ(UnicodeText::graphemeCount("Library"), 7U);
  EXPECT_EQ(UnicodeText::graphemeCount("e\u0301cran"), 5U);
  EXPECT_EQ(UnicodeText::graphemeCount("a\u0300\u0301"), 1U);
  EXPECT_EQ(UnicodeText::graphemeCount("文件"), 2U);
  EXPECT_EQ(UnicodeText::graphemeCount("👨‍👩‍👧"), 1U);
  EXPECT_EQ(UnicodeText::graphemeCount("🇩🇪🇫🇷"), 2U);
  EXPECT_EQ(UnicodeText::graphemeCount("👍🏽!"), 2U);
  EXPECT_EQ(UnicodeText::graphemeCount("각"), 1U);
}

TEST(UnicodeTextGraphemes, a_carriage_return_with_a_line_feed_is_one_grapheme) {
  EXPECT_EQ(UnicodeText::graphemeCount("a\r\nb"), 3U);
  EXPECT_EQ(UnicodeText::graphemeCount("\n\r"), 2U);
}

TEST(UnicodeTextGraphemes, a_byte_that_is_not_utf8_is_a_grapheme_of_its_own) {
  EXPECT_EQ(UnicodeText::graphemeCount("\xff\xfe"), 2U);
  EXPECT_EQ(UnicodeText::graphemeCount("a\xe2\x82"), 3U);
  EXPECT_EQ(UnicodeText::graphemeCount("\xff\u0301"), 2U);
  EXPECT_EQ(UnicodeText::graphemeCount("e\u0301\xff"), 2U);
  // U+0600 joins any character after it.
  EXPECT_EQ(UnicodeText::graphemeCount("\u0600\xff"), 2U);
  EXPECT_EQ(UnicodeText::graphemeCount("\u06001"), 1U);
}

TEST(UnicodeTextGraphemes, a_text_is_never_cut_inside_a_grapheme) {
  EXPECT_EQ(UnicodeText::firstGraphemes("Library", 3), "Lib");
  EXPECT_EQ(UnicodeText::firstGraphemes("Library", 7), "Library");
  EXPECT_EQ(UnicodeText::firstGraphemes("Library", 100), "Library");
  EXPECT_EQ(UnicodeText::firstGraphemes("Library", 0), "");
  EXPECT_EQ(UnicodeText::firstGraphemes("", 4), "");
  EXPECT_EQ(UnicodeText::firstGraphemes("e\u0301cran", 2), "e\u0301c");
  EXPECT_EQ(UnicodeText::firstGraphemes("👨‍👩‍👧👍🏽", 1), "👨‍👩‍👧");
  EXPECT_EQ(UnicodeText::firstGraphemes("\xff\xfe\xfd", 2), "\xff\xfe");
}

TEST(UnicodeTextDirection, exactly_twelve_characters_control_the_direction) {
  std::u32string found;
  for (char32_t character = 0; character <= 0x10ffff; ++character)
    if (UnicodeText::isDirectionControl(character)) found += character;
  EXPECT_EQ(found, U"\u061c\u200e\u200f\u202a\u202b\u202c\u202d\u202e\u2066\u2067\u2068\u2069");
}

TEST(UnicodeTextScalarSum, the_sum_is_that_of_the_scalar_values) {
  EXPECT_EQ(UnicodeText::scalarSum(""), 0U);
  EXPECT_EQ(UnicodeText::scalarSum("src"), std::uint64_t{'s'} + 'r' + 'c');
  EXPECT_EQ(UnicodeText::scalarSum("é"), 0xE9U);
  EXPECT_EQ(UnicodeText::scalarSum("🎬"), 0x1F3ACU);
}

TEST(UnicodeTextScalarSum, a_byte_that_is_not_utf8_counts_as_the_replacement_character) {
  EXPECT_EQ(UnicodeText::scalarSum("\xff\xfe"), 2U * 0xFFFDU);
  EXPECT_EQ(UnicodeText::scalarSum("a\xe2\x82"), 'a' + 2U * 0xFFFDU);
}

}  // namespace
}  // namespace tessaly
