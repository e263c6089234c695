#include "platform/tools/Printable.h"

#include <gtest/gtest.h>

namespace tessaly::tools {
namespace {

TEST(Printable, what_cannot_be_shown_on_a_line_becomes_a_question_mark) {
  EXPECT_EQ(printable("a\nb\tc\x1b[0m\x7f"), "a?b?c?[0m?");
  EXPECT_EQ(printable("\u202egpj.exe \u2028 \u0085"), "?gpj.exe ? ?");
  EXPECT_EQ(printable("\xff\xc3"), "??");
  EXPECT_EQ(printable("\u00e9t\u00e9 \U0001F600"), "\u00e9t\u00e9 \U0001F600");
  EXPECT_EQ(printable(""), "");
}

TEST(Printable, a_long_text_is_cut_after_a_number_of_characters) {
  EXPECT_EQ(printable("\u00e9\u00e9\u00e9", 3), "\u00e9\u00e9\u00e9");
  EXPECT_EQ(printable("\u00e9\u00e9\u00e9\u00e9", 3), "\u00e9\u00e9\u00e9...");
}

}  // namespace
}  // namespace tessaly::tools
