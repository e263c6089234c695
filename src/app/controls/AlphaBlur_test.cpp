#include "app/controls/AlphaBlur.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <vector>

namespace tessaly {
namespace {

// The integral of a Gaussian up to `distance`.
double below(double distance, double sigma) {
  return 0.5 * std::erfc(-distance / (sigma * std::sqrt(2)));
}

TEST(AlphaBlur, a_blurred_edge_is_the_integral_of_a_gaussian) {
  for (const double sigma : {2.0, 3.3, 6.0, 18.0}) {
    std::vector<std::uint8_t> line(300);
    std::fill(line.begin() + 150, line.end(), 255);
    AlphaBlur::blurLine(line.data(), 300, 1, sigma);
    for (int i = 60; i < 150; ++i) {
      EXPECT_NEAR(line.data()[i] / 255.0, below(i + 0.5 - 150, sigma), 0.012) << i << " " << sigma;
    }
  }
}

TEST(AlphaBlur, a_blur_extends_exactly_to_its_margin) {
  // The outermost sample of a deviation of 2.43 is large enough to be seen.
  for (const double sigma : {0.7, 2.0, 2.43, 6.0}) {
    std::vector<std::uint8_t> line(100);
    std::fill(line.begin() + 50, line.end(), 255);
    AlphaBlur::blurLine(line.data(), 100, 1, sigma);
    EXPECT_EQ(line.data()[49 - AlphaBlur::margin(sigma)], 0) << sigma;
    EXPECT_GT(line.data()[49 - static_cast<int>(sigma)], 0) << sigma;
  }
}

TEST(AlphaBlur, a_column_is_blurred_like_a_line_and_its_neighbours_stay) {
  std::vector<std::uint8_t> line(40);
  std::fill_n(line.begin() + 15, 10, 200);
  std::vector<std::uint8_t> table(120, 7);
  for (int i = 0; i < 40; ++i) table.data()[i * 3 + 1] = line.data()[i];
  AlphaBlur::blurLine(line.data(), 40, 1, 2.5);
  AlphaBlur::blurLine(table.data() + 1, 40, 3, 2.5);
  for (int i = 0; i < 40; ++i) {
    EXPECT_EQ(table.data()[i * 3], 7);
    EXPECT_EQ(table.data()[i * 3 + 1], line.data()[i]) << i;
    EXPECT_EQ(table.data()[i * 3 + 2], 7);
  }
}

TEST(AlphaBlur, a_blur_keeps_the_sum_of_the_opacity) {
  std::vector<std::uint8_t> line(100);
  line.data()[50] = 255;
  line.data()[51] = 255;
  AlphaBlur::blurLine(line.data(), 100, 1, 3);
  int sum = 0;
  for (const std::uint8_t value : line) sum += value;
  EXPECT_NEAR(sum, 510, 8);
}

TEST(AlphaBlur, a_blur_without_a_deviation_changes_nothing) {
  std::vector<std::uint8_t> line = {0, 9, 255, 0, 77};
  const std::vector<std::uint8_t> before = line;
  AlphaBlur::blurLine(line.data(), 5, 1, 0);
  EXPECT_EQ(line, before);
}

TEST(AlphaBlur, an_image_is_blurred_in_both_directions_to_its_last_line) {
  QImage image(21, 21, QImage::Format_Alpha8);
  image.fill(255);
  AlphaBlur::blur(image, 3);
  const auto alpha = [&](int x, int y) { return static_cast<int>(image.constScanLine(y)[x]); };
  for (int y = 0; y < 21; ++y) {
    for (int x = 0; x < 21; ++x) {
      EXPECT_NEAR(alpha(x, y), alpha(y, x), 1) << x << " " << y;
      EXPECT_EQ(alpha(x, y), alpha(20 - x, y)) << x << " " << y;
      EXPECT_EQ(alpha(x, y), alpha(x, 20 - y)) << x << " " << y;
    }
  }
  // What is beyond the image counts as 0, which an edge has on one side and a corner on two.
  EXPECT_GT(alpha(10, 10), 250);
  EXPECT_LT(alpha(10, 0), 160);
  EXPECT_NEAR(alpha(0, 0), alpha(10, 0) * alpha(0, 10) / 255.0, 2);
}

}  // namespace
}  // namespace tessaly
