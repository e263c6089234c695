#include "platform/UnicodeText.h"

#include <gtest/gtest.h>
#include <string>

namespace tessaly {
namespace {

using namespace std::string_literals;
using UnicodeText::foldedForSearch;
using UnicodeText::isUtf8;

void appendUtf8(std::string& text, char32_t value) {
  const auto byte = [&](char32_t bits) { text += static_cast<char>(bits); };
  const auto more = [&](unsigned shift) { byte(0x80U | ((value >> shift) & 0x3FU)); };
  if (value < 0x80) {
    byte(value);
  } else if (value < 0x800) {
    byte(0xC0U | (value >> 6U));
  } else if (value < 0x10000) {
    byte(0xE0U | (value >> 12U));
  } else {
    byte(0xF0U | (value >> 18U));
    more(12);
  }
  if (value >= 0x800) more(6);
  if (value >= 0x80) more(0);
}

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

TEST(UnicodeTextFolded, case_and_accents_make_no_difference) {
  EXPECT_EQ(foldedForSearch("R\u00c9sum\u00c9 2024.PDF"), "resume 2024.pdf");
  EXPECT_EQ(foldedForSearch("re\u0301sume\u0301"), foldedForSearch("r\u00e9sum\u00e9"));
  EXPECT_EQ(foldedForSearch("Stra\u00dfe"), "strasse");
  EXPECT_EQ(foldedForSearch("\u1ec6"), "e");
  EXPECT_EQ(foldedForSearch("\u039f\u0394\u038c\u03a3"),
            foldedForSearch("\u03bf\u03b4\u03cc\u03c2"));
  EXPECT_EQ(foldedForSearch(""), "");
}

TEST(UnicodeTextFolded, marks_that_make_another_letter_are_kept) {
  EXPECT_NE(foldedForSearch("\u304c"), foldedForSearch("\u304b"));              // ga, ka
  EXPECT_NE(foldedForSearch("\u0915\u093f"), foldedForSearch("\u0915\u093e"));  // ki, kaa
  EXPECT_NE(foldedForSearch("\u0e19\u0e35"), foldedForSearch("\u0e19\u0e34"));  // two vowels
}

TEST(UnicodeTextFolded, the_form_of_a_form_is_itself) {
  for (char32_t value = 1; value < 0x110000; ++value) {
    if (value == 0xD800) value = 0xE000;
    std::string text;
    appendUtf8(text, value);
    const std::string once = foldedForSearch(text);
    ASSERT_EQ(foldedForSearch(once), once) << std::hex << static_cast<std::uint32_t>(value);
    ASSERT_TRUE(isUtf8(text) && isUtf8(once)) << std::hex << static_cast<std::uint32_t>(value);
  }
}

TEST(UnicodeTextFolded, bytes_that_are_not_utf8_are_kept) {
  EXPECT_EQ(foldedForSearch("A\xff\xc3"), "a\xff\xc3");
  EXPECT_TRUE(isUtf8("") && isUtf8("a\u00e9\U0001F600"));
  EXPECT_FALSE(isUtf8("A\xff") || isUtf8("\xc3") || isUtf8("\xed\xa0\x80"));
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
