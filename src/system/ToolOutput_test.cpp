#include "system/ToolOutput.h"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace tessaly {
namespace {

using namespace std::string_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ToolOutput::integer;
using ToolOutput::lines;
using ToolOutput::number;
using ToolOutput::trimmed;
using ToolOutput::words;

TEST(ToolOutputLines, every_newline_of_unicode_ends_a_line) {
  for (const std::string& newline :
       {"\n"s, "\v"s, "\f"s, "\r"s, "\u0085"s, "\u2028"s, "\u2029"s, "\r\n"s}) {
    EXPECT_THAT(lines("a b" + newline + "c"), ElementsAre("a b", "c")) << newline;
  }
}

TEST(ToolOutputLines, no_other_character_ends_a_line) {
  for (const std::string& other :
       {"\t"s, "\x0e"s, "\x1c"s, "\x1e"s, "\0"s, "\u2027"s, "\u202A"s, "\u0086"s, "\u00A0"s}) {
    EXPECT_THAT(lines("a" + other + "c"), ElementsAre("a" + other + "c"));
  }
}

TEST(ToolOutputLines, empty_lines_are_left_out_and_blank_ones_are_not) {
  EXPECT_THAT(lines("\n\na\n\n\n \nb\n\n"), ElementsAre("a", " ", "b"));
  EXPECT_THAT(lines("\n\r\n\n"), IsEmpty());
  EXPECT_THAT(lines(""), IsEmpty());
  EXPECT_THAT(lines(std::string_view()), IsEmpty());
}

TEST(ToolOutputLines, bytes_that_are_not_utf8_do_not_end_a_line) {
  // The bytes of newlines beyond ASCII, each incomplete or in the wrong order.
  EXPECT_THAT(lines("a\x85"
                    "b\xc2"
                    "c\xe2\x80"
                    "d\xa8"),
              ElementsAre("a\x85"
                          "b\xc2"
                          "c\xe2\x80"
                          "d\xa8"));
  EXPECT_THAT(lines("\xff\n\xfe"), ElementsAre("\xff", "\xfe"));
}

TEST(ToolOutputWords, every_white_space_of_unicode_separates_words) {
  for (const std::string& space :
       {"\t"s,     "\n"s,     "\v"s,     "\f"s,     "\r"s,     " "s,      "\u0085"s,
        "\u00A0"s, "\u1680"s, "\u2000"s, "\u2001"s, "\u2002"s, "\u2003"s, "\u2004"s,
        "\u2005"s, "\u2006"s, "\u2007"s, "\u2008"s, "\u2009"s, "\u200A"s, "\u2028"s,
        "\u2029"s, "\u202F"s, "\u205F"s, "\u3000"s}) {
    EXPECT_THAT(words(space + "a" + space + space + "b" + space), ElementsAre("a", "b")) << space;
  }
}

TEST(ToolOutputWords, no_other_character_separates_words) {
  for (const std::string& other :
       {"\x1f"s, "\x0e"s, "\0"s, "\u180E"s, "\u200B"s, "\u2060"s, "\uFEFF"s, "\x85"s, "\xa0"s}) {
    EXPECT_THAT(words("a" + other + "b"), ElementsAre("a" + other + "b"));
  }
}

TEST(ToolOutputWords, blank_text_has_no_words) {
  EXPECT_THAT(words(""), IsEmpty());
  EXPECT_THAT(words(" \t \u3000"), IsEmpty());
}

TEST(ToolOutputTrimmed, only_white_space_and_newlines_at_both_ends_are_removed) {
  EXPECT_EQ(trimmed("\r\n\t 1 2\u2029\n\u3000"), "1 2");
  EXPECT_EQ(trimmed("12"), "12");
  EXPECT_EQ(trimmed(" \n"), "");
  EXPECT_EQ(trimmed(""), "");
}

TEST(ToolOutputInteger, decimal_digits_with_or_without_a_sign_are_an_integer) {
  EXPECT_EQ(integer("0"), 0);
  EXPECT_EQ(integer("42"), 42);
  EXPECT_EQ(integer("+42"), 42);
  EXPECT_EQ(integer("-42"), -42);
  EXPECT_EQ(integer("-0"), 0);
  EXPECT_EQ(integer("0000000000000000000000000000007"), 7);
}

TEST(ToolOutputInteger, integers_of_more_than_64_bits_are_refused) {
  EXPECT_EQ(integer("9223372036854775807"), std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(integer("+9223372036854775807"), std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(integer("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
  EXPECT_EQ(integer("9223372036854775808"), std::nullopt);
  EXPECT_EQ(integer("+9223372036854775808"), std::nullopt);
  EXPECT_EQ(integer("-9223372036854775809"), std::nullopt);
  EXPECT_EQ(integer(std::string(400, '9')), std::nullopt);
}

TEST(ToolOutputInteger, a_text_with_any_other_character_is_no_integer) {
  for (const std::string& text :
       {""s,    "+"s,   "-"s,      "+-1"s, "-+1"s, "++1"s, "--1"s,  " 1"s,  "1 "s,
        "1\n"s, "1.0"s, "1e3"s,    "0x1"s, "1K"s,  "1%"s,  "1,0"s,  "1_0"s, "a"s,
        "\0"s,  "1\0"s, "\u0661"s, "١"s,   "１"s,  "−1"s,  "1\xff"s}) {
    EXPECT_EQ(integer(text), std::nullopt) << text;
  }
}

TEST(ToolOutputNumber, decimal_forms_are_read_as_numbers) {
  EXPECT_EQ(number("60"), 60.0);
  EXPECT_EQ(number("0.1"), 0.1);
  EXPECT_EQ(number("+1.5"), 1.5);
  EXPECT_EQ(number("-1.5"), -1.5);
  EXPECT_EQ(number(".5"), 0.5);
  EXPECT_EQ(number("5."), 5.0);
  EXPECT_EQ(number("1e3"), 1000.0);
  EXPECT_EQ(number("1E-2"), 0.01);
  EXPECT_EQ(number("1.7976931348623157e308"), std::numeric_limits<double>::max());
  EXPECT_EQ(number("5e-324"), std::numeric_limits<double>::denorm_min());
  EXPECT_TRUE(std::signbit(*number("-0")));
}

TEST(ToolOutputNumber, hexadecimal_forms_are_read_as_numbers) {
  EXPECT_EQ(number("0x1F"), 31.0);
  EXPECT_EQ(number("0X1f"), 31.0);
  EXPECT_EQ(number("-0x1.8p1"), -3.0);
  EXPECT_EQ(number("0x.8"), 0.5);
}

TEST(ToolOutputNumber, infinity_and_nan_are_refused) {
  for (const char* text : {"inf", "-inf", "INF", "infinity", "nan", "-nan", "NaN", "nan(1)",
                           "0xinf", "1e999", "-1e999", "1e-999", "0x1p99999"}) {
    EXPECT_EQ(number(text), std::nullopt) << text;
  }
}

TEST(ToolOutputNumber, a_text_with_any_other_character_is_no_number) {
  for (const std::string& text :
       {""s,     "+"s,     "-"s,   "."s,     "-."s,  "e5"s, "1e"s,   "1e+"s, "+-1"s,
        "-+1"s,  "--1"s,   " 1"s,  "1 "s,    "1,5"s, "1%"s, "1f"s,   "0x"s,  "0xp1"s,
        "0x-1"s, "-0x+1"s, "1\0"s, "1.2.3"s, "p1"s,  "１"s, "1\xff"s}) {
    EXPECT_EQ(number(text), std::nullopt) << text;
  }
}

}  // namespace
}  // namespace tessaly
