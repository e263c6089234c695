#include "app/panes/BreakdownLayout.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

using BreakdownLayout::Segment;
using BreakdownLayout::segments;
using Segments = std::vector<Segment>;

TEST(BreakdownLayout, each_segment_has_its_fraction_of_the_width_without_gaps) {
  EXPECT_EQ(segments({0.5, 0.3, 0.2}, {.width = 102}), (Segments{{0, 50}, {51, 81}, {82, 102}}));
  EXPECT_EQ(segments({1}, {.width = 100}), (Segments{{0, 100}}));
  EXPECT_EQ(segments({}, {.width = 100}), Segments{});
}

TEST(BreakdownLayout, the_segments_end_with_the_bar_and_have_equal_gaps) {
  const std::vector<double> fractions = {0.401, 0.333, 0.151, 0.07, 0.029, 0.01, 0.004, 0.002};
  for (int width = 200; width <= 1400; ++width) {
    for (const int gap : {1, 2}) {
      const Segments all = segments(fractions, {.width = width, .gap = gap});
      ASSERT_EQ(all.size(), fractions.size());
      EXPECT_EQ(all.front().left, 0);
      EXPECT_EQ(all.back().right, width);
      for (std::size_t i = 1; i < all.size(); ++i)
        EXPECT_EQ(all[i].left - all[i - 1].right, gap) << width;
    }
  }
}

TEST(BreakdownLayout, each_segment_is_within_a_pixel_of_its_fraction) {
  const std::vector<double> fractions = {0.41, 0.26, 0.11, 0.1, 0.1, 0.02};
  for (int width = 300; width <= 1400; ++width) {
    const Segments all = segments(fractions, {.width = width});
    for (std::size_t i = 0; i < all.size(); ++i)
      EXPECT_NEAR(all[i].right - all[i].left, fractions[i] * (width - 5), 1) << width;
  }
}

TEST(BreakdownLayout, the_widest_segment_alone_gives_up_what_the_smallest_need) {
  // Of 1,000 pixels without the gaps: 600, 398, and three widths below one.
  const std::vector<double> fractions = {0.6, 0.398, 0.0008, 0.0007, 0.0005};
  EXPECT_EQ(segments(fractions, {.width = 1004}),
            (Segments{{0, 596}, {597, 995}, {996, 998}, {999, 1001}, {1002, 1004}}));
}

TEST(BreakdownLayout, the_next_segment_gives_up_width_if_the_widest_cannot) {
  EXPECT_EQ(segments({0.3, 0.28, 0.2, 0.12, 0.1}, {.width = 14}),
            (Segments{{0, 2}, {3, 5}, {6, 8}, {9, 11}, {12, 14}}));
}

TEST(BreakdownLayout, the_segments_exceed_a_bar_that_is_too_narrow) {
  EXPECT_EQ(segments({0.5, 0.5}, {.width = 3}), (Segments{{0, 2}, {3, 5}}));
}

}  // namespace
}  // namespace tessaly
