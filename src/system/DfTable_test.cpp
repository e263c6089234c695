#include "system/DfTable.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

TEST(DfTable, a_header_begins_with_its_first_word_in_any_case) {
  EXPECT_TRUE(DfTable::isHeader("Filesystem 1K-blocks Used Available Use% Mounted on"));
  EXPECT_TRUE(DfTable::isHeader("FILESYSTEM"));
  EXPECT_TRUE(DfTable::isHeader("filesystems and more"));
}

TEST(DfTable, no_other_line_is_a_header) {
  EXPECT_FALSE(DfTable::isHeader(""));
  EXPECT_FALSE(DfTable::isHeader("filesyste"));
  EXPECT_FALSE(DfTable::isHeader(" Filesystem"));
  EXPECT_FALSE(DfTable::isHeader("Dateisystem 1K-Blöcke Benutzt Verfügbar Verw% Eingehängt auf"));
  EXPECT_FALSE(DfTable::isHeader("/dev/filesystem 1 2 3 4% /"));
}

TEST(DfTable, sizes_are_in_kibibytes) {
  EXPECT_EQ(DfTable::bytes("100"), 102400);
  EXPECT_EQ(DfTable::bytes("0"), 0);
  EXPECT_EQ(DfTable::bytes("-3"), -3072);
  EXPECT_EQ(DfTable::bytes("-"), std::nullopt);
  EXPECT_EQ(DfTable::bytes("1K"), std::nullopt);
}

TEST(DfTable, a_size_that_does_not_fit_in_bytes_is_absent) {
  EXPECT_EQ(DfTable::bytes("9007199254740991"), 9223372036854774784);
  EXPECT_EQ(DfTable::bytes("9007199254740992"), std::nullopt);
  EXPECT_EQ(DfTable::bytes("-9007199254740993"), std::nullopt);
  EXPECT_EQ(DfTable::bytes("9223372036854775807"), std::nullopt);
}

TEST(DfTable, percentages_are_read_without_their_signs) {
  EXPECT_EQ(DfTable::percent("60%"), 60.0);
  EXPECT_EQ(DfTable::percent("%6%0.5%"), 60.5);
  EXPECT_EQ(DfTable::percent("60"), 60.0);
  EXPECT_EQ(DfTable::percent("103%"), 103.0);
}

TEST(DfTable, a_percentage_that_is_not_finite_is_zero) {
  for (const char* text : {"-", "%", "", "a%", "1,5%", "nan%", "inf%", "-inf", "1e999%"}) {
    EXPECT_EQ(DfTable::percent(text), 0.0) << text;
  }
}

}  // namespace
}  // namespace tessaly
