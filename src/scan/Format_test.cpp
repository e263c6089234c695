#include "scan/Format.h"

#include <clocale>
#include <cmath>
#include <cstdio>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace tessaly {
namespace {

TEST(FormatBytes, a_count_below_one_is_written_as_zero_bytes) {
  EXPECT_EQ(Format::bytes(0), "0 B");
  EXPECT_EQ(Format::bytes(-5), "0 B");
  EXPECT_EQ(Format::bytes(std::numeric_limits<std::int64_t>::min()), "0 B");
}

TEST(FormatBytes, counts_below_1024_are_written_without_decimals) {
  EXPECT_EQ(Format::bytes(1), "1 B");
  EXPECT_EQ(Format::bytes(1023), "1023 B");
}

TEST(FormatBytes, each_unit_of_bytes_is_1024_of_the_previous_one) {
  EXPECT_EQ(Format::bytes(1024), "1.0 KB");
  EXPECT_EQ(Format::bytes(1000 * 1024), "1000.0 KB");
  EXPECT_EQ(Format::bytes(std::int64_t{1} << 20U), "1.0 MB");
  EXPECT_EQ(Format::bytes(std::int64_t{3} << 29U), "1.5 GB");
  EXPECT_EQ(Format::bytes(std::int64_t{1} << 40U), "1.0 TB");
  EXPECT_EQ(Format::bytes(std::int64_t{1} << 50U), "1.0 PB");
}

TEST(FormatBytes, the_unit_is_chosen_before_the_value_is_rounded) {
  EXPECT_EQ(Format::bytes((std::int64_t{1} << 20U) - 1), "1024.0 KB");
}

TEST(FormatBytes, the_largest_unit_of_bytes_is_petabytes) {
  EXPECT_EQ(Format::bytes(std::int64_t{1} << 60U), "1024.0 PB");
  EXPECT_EQ(Format::bytes(std::numeric_limits<std::int64_t>::max()), "8192.0 PB");
}

TEST(FormatBytes, a_tie_is_rounded_to_the_even_digit) {
  EXPECT_EQ(Format::bytes(1280), "1.2 KB");  // 1.25
  EXPECT_EQ(Format::bytes(1792), "1.8 KB");  // 1.75
  EXPECT_EQ(Format::bytes(1281), "1.3 KB");
}

TEST(FormatRate, nan_and_values_not_above_zero_are_a_rate_of_zero) {
  EXPECT_EQ(Format::rate(-1), "0 B/s");
  EXPECT_EQ(Format::rate(0), "0 B/s");
  EXPECT_EQ(Format::rate(std::nan("")), "0 B/s");
}

TEST(FormatRate, the_unit_of_a_rate_is_chosen_before_the_value_is_rounded) {
  EXPECT_EQ(Format::rate(1023.6), "1024 B/s");
  EXPECT_EQ(Format::rate(1024), "1.0 KB/s");
  EXPECT_EQ(Format::rate(0.5), "0 B/s");
  EXPECT_EQ(Format::rate(1.5), "2 B/s");
}

TEST(FormatRate, each_unit_of_a_rate_is_1024_of_the_previous_one_with_one_decimal) {
  constexpr double KiB = 1024;
  constexpr double MiB = 1024 * KiB;
  constexpr double GiB = 1024 * MiB;
  EXPECT_EQ(Format::rate(1.5 * KiB), "1.5 KB/s");
  EXPECT_EQ(Format::rate(1000 * KiB), "1000.0 KB/s");
  EXPECT_EQ(Format::rate(std::nextafter(MiB, 0)), "1024.0 KB/s");
  EXPECT_EQ(Format::rate(MiB), "1.0 MB/s");
  EXPECT_EQ(Format::rate(1.5 * MiB), "1.5 MB/s");
  EXPECT_EQ(Format::rate(37.26 * MiB), "37.3 MB/s");
  EXPECT_EQ(Format::rate(1000 * MiB), "1000.0 MB/s");
  EXPECT_EQ(Format::rate(std::nextafter(GiB, 0)), "1024.0 MB/s");
  EXPECT_EQ(Format::rate(GiB), "1.0 GB/s");
  EXPECT_EQ(Format::rate(2.5 * GiB), "2.5 GB/s");
  EXPECT_EQ(Format::rate(1024 * GiB), "1024.0 GB/s");
}

TEST(FormatRate, the_largest_unit_of_a_rate_is_gigabytes) {
  EXPECT_EQ(Format::rate(1024.0 * 1024), "1.0 MB/s");
  EXPECT_EQ(Format::rate(1024.0 * 1024 * 1024), "1.0 GB/s");
  EXPECT_EQ(Format::rate(std::pow(2, 50)), "1048576.0 GB/s");
}

TEST(FormatRate, the_largest_number_is_written_with_all_digits) {
  const double largest = std::numeric_limits<double>::max();
  EXPECT_EQ(Format::rate(largest), Format::fixed(largest / 1024 / 1024 / 1024, 1) + " GB/s");
  EXPECT_EQ(Format::fixed(-largest, 2).size(), 313U);
}

TEST(FormatFixed, fixed_agrees_with_the_c_library_on_random_values) {
  std::mt19937_64 random(20240817);
  std::uniform_real_distribution<double> magnitude(-3, 15);
  for (int i = 0; i < 20000; ++i) {
    // Half of the values are multiples of an eighth, where ties occur.
    double value = std::pow(10.0, magnitude(random));
    if (i % 2 == 0) value = std::round(value * 8) / 8;
    for (const int decimals : {0, 1, 2}) {
      char expected[64];
      std::snprintf(expected, sizeof expected, "%.*f", decimals, value);
      ASSERT_EQ(Format::fixed(value, decimals), expected);
    }
  }
}

TEST(FormatFixed, the_format_does_not_depend_on_the_locale) {
  const std::string before = std::setlocale(LC_ALL, nullptr);
  for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8"}) {
    if (std::setlocale(LC_ALL, name) == nullptr) continue;
    EXPECT_EQ(Format::bytes(1536), "1.5 KB");
  }
  std::setlocale(LC_ALL, before.c_str());
  EXPECT_EQ(Format::bytes(1536), "1.5 KB");
}

TEST(FormatCounted, an_s_is_appended_to_the_noun_except_for_one) {
  EXPECT_EQ(Format::counted(0, "item"), "0 items");
  EXPECT_EQ(Format::counted(1, "item"), "1 item");
  EXPECT_EQ(Format::counted(2, "path"), "2 paths");
}

}  // namespace
}  // namespace tessaly
