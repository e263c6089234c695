#include "app/model/DisplayText.h"

#include <gtest/gtest.h>

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

TEST(DisplayText, of_nothing_is_empty) {
  EXPECT_TRUE(displayText({}).isEmpty());
}

}  // namespace
}  // namespace tessaly
