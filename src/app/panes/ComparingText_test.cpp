#include "app/panes/ComparingText.h"

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>

namespace tessaly {
namespace {

constexpr std::int64_t giga = 1LL << 30U;

QString textOf(std::size_t files, std::size_t fileCount, std::int64_t bytes,
               std::int64_t byteCount) {
  return ComparingText::of(
      {.files = files, .fileCount = fileCount, .bytes = bytes, .byteCount = byteCount});
}

TEST(ComparingText, files_and_bytes_are_counted_in_the_unit_of_the_whole) {
  EXPECT_EQ(textOf(12, 40, giga + giga / 5, 8 * giga), "Comparing 12 of 40 files · 1.2 of 8 GB");
  EXPECT_EQ(textOf(1, 2, 60LL << 20U, giga + giga / 2), "Comparing 1 of 2 files · 0.1 of 1.5 GB");
  EXPECT_EQ(textOf(0, 3, 0, 180LL << 20U), "Comparing 0 of 3 files · 0 of 180 MB");
  EXPECT_EQ(textOf(3, 3, 180LL << 20U, 180LL << 20U), "Comparing 3 of 3 files · 180 of 180 MB");
}

TEST(ComparingText, small_and_single_files_have_a_text_too) {
  EXPECT_EQ(textOf(0, 1, 0, 0), "Comparing 0 of 1 file · 0 of 0 B");
  EXPECT_EQ(textOf(1, 2, 100, 200), "Comparing 1 of 2 files · 100 of 200 B");
  EXPECT_EQ(textOf(1, 2, 3LL << 40U, 6LL << 40U), "Comparing 1 of 2 files · 3 of 6 TB");
}

}  // namespace
}  // namespace tessaly
