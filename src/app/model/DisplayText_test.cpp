#include "app/model/DisplayText.h"

#include <gtest/gtest.h>
#include <string>

namespace tessaly {
namespace {

TEST(DisplayText, leaves_names_of_any_script_as_they_are) {
  EXPECT_EQ(displayText("مستندات 文档 🧑‍💻").toStdString(),
            "مستندات 文档 🧑‍💻");
}

TEST(DisplayText, shows_bytes_that_are_not_utf8_as_replacement_characters) {
  EXPECT_EQ(displayText("caf\xE9.txt").toStdString(), "caf\uFFFD.txt");
}

TEST(DisplayText, keeps_a_name_with_a_line_break_on_one_line) {
  EXPECT_EQ(displayText("two\nlines\tand\u2028more").toStdString(),
            "two\uFFFDlines\uFFFDand\uFFFDmore");
}

TEST(DisplayText, lets_no_name_turn_the_text_around) {
  EXPECT_EQ(displayText("\u202Egpj.exe").toStdString(), "\uFFFDgpj.exe");
  for (const char* control : {"\u061c", "\u200e", "\u200f", "\u202a", "\u202b", "\u202c", "\u202d",
                              "\u202e", "\u2066", "\u2067", "\u2068", "\u2069"}) {
    EXPECT_EQ(displayText(std::string("a") + control + "b").toStdString(), "a\uFFFDb");
  }
}

TEST(DisplayText, leaves_joiners_alone_without_which_words_fall_apart) {
  EXPECT_EQ(displayText("می\u200cخواهم \u200d").toStdString(), "می\u200cخواهم \u200d");
}

TEST(DisplayText, of_nothing_is_empty) {
  EXPECT_TRUE(displayText({}).isEmpty());
}

}  // namespace
}  // namespace tessaly
