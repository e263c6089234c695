#include "support/SystemWords.h"

#include <gtest/gtest.h>
#include <string>

namespace tessaly {
namespace {

TEST(SystemWords, words_are_found_at_the_beginning_middle_and_end_of_a_text) {
  for (const std::string_view word : wordsOfMacos) {
    const std::string text(word);
    for (const std::string& around : {text, text + " first", "the " + text + ", too", "a " + text})
      EXPECT_EQ(wordOfMacosIn(around), word) << around;
  }
}

TEST(SystemWords, words_are_found_in_any_case) {
  EXPECT_EQ(wordOfMacosIn("Start hidden in Menu Bar"), "menu bar");
  EXPECT_EQ(wordOfMacosIn("full disk access"), "Full Disk Access");
}

TEST(SystemWords, words_are_found_beside_figures_and_signs) {
  EXPECT_EQ(wordOfMacosIn("⌘F"), "⌘");
  EXPECT_EQ(wordOfMacosIn("252.0 GB APFS."), "APFS");
}

TEST(SystemWords, words_are_not_found_inside_other_words) {
  for (const char* text : {"", "Machine", "Television", "pathfinder", "Macro", "the time", "menu"})
    EXPECT_EQ(wordOfMacosIn(text), std::nullopt) << text;
}

}  // namespace
}  // namespace tessaly
