#include "app/model/DisplayText.h"

#include <gtest/gtest.h>
#include <string>

namespace tessaly {
namespace {

TEST(DisplayText, names_in_any_script_are_unchanged) {
  EXPECT_EQ(displayText("مستندات 文档 🧑‍💻").toStdString(),
            "مستندات 文档 🧑‍💻");
}

TEST(DisplayText, bytes_that_are_not_utf8_are_replacement_characters) {
  EXPECT_EQ(displayText("caf\xE9.txt").toStdString(), "caf\uFFFD.txt");
}

TEST(DisplayText, a_name_with_a_line_break_stays_on_one_line) {
  EXPECT_EQ(displayText("two\nlines\tand\u2028more").toStdString(),
            "two\uFFFDlines\uFFFDand\uFFFDmore");
}

TEST(DisplayText, direction_controls_are_replaced) {
  EXPECT_EQ(displayText("\u202Egpj.exe").toStdString(), "\uFFFDgpj.exe");
  for (const char* control : {"\u061c", "\u200e", "\u200f", "\u202a", "\u202b", "\u202c", "\u202d",
                              "\u202e", "\u2066", "\u2067", "\u2068", "\u2069"}) {
    EXPECT_EQ(displayText(std::string("a") + control + "b").toStdString(), "a\uFFFDb");
  }
}

TEST(DisplayText, joiners_are_kept_which_some_scripts_need) {
  EXPECT_EQ(displayText("می\u200cخواهم \u200d").toStdString(), "می\u200cخواهم \u200d");
}

TEST(DisplayText, an_empty_name_is_empty) {
  EXPECT_TRUE(displayText({}).isEmpty());
}

}  // namespace
}  // namespace tessaly
