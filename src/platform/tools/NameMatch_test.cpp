#include "platform/tools/NameMatch.h"

#include <gtest/gtest.h>

namespace tessaly::tools {
namespace {

using Place = NameMatch::Place;

TEST(NameMatch, a_text_is_found_at_the_start_and_anywhere_in_a_name) {
  const NameMatch match("note");
  EXPECT_EQ(match.in("note"), Place::start);
  EXPECT_EQ(match.in("notes.txt"), Place::start);
  EXPECT_EQ(match.in("my note"), Place::inside);
  EXPECT_EQ(match.in("keynote"), Place::inside);
  for (const char* const name : {"", "n", "not", "not e", "enot", "nnote-less no te"}) {
    EXPECT_EQ(match.in(name),
              std::string_view(name) == "nnote-less no te" ? Place::inside : Place::nowhere)
        << name;
  }
}

TEST(NameMatch, case_and_accents_make_no_difference) {
  for (const char* const text : {"resume", "R\u00c9SUM\u00c9", "re\u0301sume\u0301"}) {
    const NameMatch match(text);
    for (const char* const name : {"resume", "Resume", "r\u00e9sum\u00e9", "RE\u0301SUME\u0301"}) {
      EXPECT_EQ(match.in(name), Place::start) << text << " in " << name;
      EXPECT_EQ(match.in(std::string("\u00e0 la ") + name + "!"), Place::inside);
    }
  }
  EXPECT_EQ(NameMatch("\u00df").in("STRASSE"), Place::inside);
}

TEST(NameMatch, every_letter_of_ascii_matches_in_both_cases_and_nothing_else_does) {
  for (char lower = 'a'; lower <= 'z'; ++lower) {
    const std::string small(1, lower);
    const std::string capital(1, static_cast<char>(lower - 'a' + 'A'));
    EXPECT_EQ(NameMatch(small).in(capital), Place::start) << small;
    EXPECT_EQ(NameMatch(capital).in(small), Place::start) << small;
  }
  // The neighbours of the letters, and what lies as far from them as the other case.
  for (const auto& [text, name] : {std::pair("[", "{"), {"{", "["}, {"@", "`"}, {"`", "@"}})
    EXPECT_EQ(NameMatch(text).in(name), Place::nowhere) << text;
}

TEST(NameMatch, letters_beyond_ascii_are_found_only_where_they_are) {
  const NameMatch match("\u65e5\u672c");
  EXPECT_EQ(match.in("\u65e5\u672c.txt"), Place::start);
  EXPECT_EQ(match.in("\u672c\u65e5"), Place::nowhere);
  EXPECT_EQ(match.in("nihon"), Place::nowhere);
  EXPECT_EQ(NameMatch("a").in("\u65e5\u672cA"), Place::inside);
}

// Names are compared in words of eight bytes.
TEST(NameMatch, an_accent_is_seen_at_each_place_of_a_name) {
  const NameMatch match("e");
  for (std::size_t before = 0; before < 20; ++before) {
    EXPECT_EQ(match.in(std::string(before, 'x') + "\u00e9"),
              before == 0 ? Place::start : Place::inside);
    EXPECT_EQ(match.in(std::string(before, 'x') + "\u00f8"), Place::nowhere);
  }
}

TEST(NameMatch, a_name_that_is_not_utf8_is_searched_too) {
  EXPECT_EQ(NameMatch("film").in("\xff old FILM"), Place::inside);
}

}  // namespace
}  // namespace tessaly::tools
