#include "app/desktop/SuggestedName.h"

#include <gtest/gtest.h>
#include <string>

namespace tessaly {
namespace {

std::string repeated(const std::string& text, int count) {
  std::string result;
  for (int i = 0; i < count; ++i) result += text;
  return result;
}

TEST(SuggestedName, a_usual_name_is_kept) {
  EXPECT_EQ(suggestedName("marrow-My caf\u00e9.v2.json", "json"), "marrow-My caf\u00e9.v2.json");
}

TEST(SuggestedName, a_missing_extension_is_added) {
  EXPECT_EQ(suggestedName("marrow-home", "json"), "marrow-home.json");
  EXPECT_EQ(suggestedName("marrow-home.js", "json"), "marrow-home.js.json");
}

TEST(SuggestedName, slashes_are_replaced) {
  EXPECT_EQ(suggestedName("marrow-/.json", "json"), "marrow--.json");
  EXPECT_EQ(suggestedName("a/b/c.json", "json"), "a-b-c.json");
}

TEST(SuggestedName, line_breaks_are_replaced) {
  EXPECT_EQ(suggestedName("a\nb\tc\x7f\u0085\u2028.json", "json"), "a-b-c---.json");
  EXPECT_EQ(suggestedName(std::string("a\0b", 3), "json"), "a-b.json");
}

TEST(SuggestedName, direction_controls_are_replaced) {
  EXPECT_EQ(suggestedName("marrow-\u202Egpj.exe.json", "json"), "marrow--gpj.exe.json");
  EXPECT_EQ(suggestedName("\u2067a\u2069\u200f.json", "json"), "-a--.json");
}

TEST(SuggestedName, characters_that_are_special_in_a_name_field_are_replaced) {
  EXPECT_EQ(suggestedName("two \"words\".json", "json"), "two 'words'.json");
  EXPECT_EQ(suggestedName("~root~.json", "json"), "-root~.json");
}

TEST(SuggestedName, bytes_that_are_not_utf8_are_replaced) {
  EXPECT_EQ(suggestedName("caf\xe9\xff.json", "json"), "caf\ufffd\ufffd.json");
}

TEST(SuggestedName, a_long_name_is_cut_before_the_extension) {
  EXPECT_EQ(suggestedName(repeated("a", 250) + ".json", "json"), repeated("a", 250) + ".json");
  EXPECT_EQ(suggestedName(repeated("a", 251) + ".json", "json"), repeated("a", 250) + ".json");
  EXPECT_EQ(suggestedName(repeated("\xff", 255), "json"), repeated("\ufffd", 83) + ".json");
}

TEST(SuggestedName, a_long_name_is_cut_between_characters) {
  // An "e" with a combining accent: three bytes that belong together.
  const std::string accented = "e\u0301";
  EXPECT_EQ(suggestedName("ab" + repeated(accented, 85), "json"),
            "ab" + repeated(accented, 82) + ".json");
}

}  // namespace
}  // namespace tessaly
