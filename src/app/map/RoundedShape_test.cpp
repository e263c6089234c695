#include "app/map/RoundedShape.h"

#include <cmath>
#include <gtest/gtest.h>

namespace tessaly {
namespace {

double areaOf(RoundedShape& shape) {
  double area = 0;
  for (int y = shape.firstRow(); y < shape.endRow(); ++y) {
    const RoundedShape::Row row = shape.row(y);
    for (int x = row.begin; x < row.end; ++x) area += row.at(x) / 255.0;
  }
  return area;
}

TEST(RoundedShape, a_rectangle_on_pixel_edges_covers_whole_pixels) {
  RoundedShape shape({2, 3, 10, 5}, 0);
  EXPECT_EQ(shape.firstRow(), 3);
  EXPECT_EQ(shape.endRow(), 8);
  const RoundedShape::Row row = shape.row(4);
  EXPECT_EQ(row.begin, 2);
  EXPECT_EQ(row.end, 12);
  for (int x = 2; x < 12; ++x) EXPECT_EQ(row.at(x), 255) << x;
  EXPECT_EQ(row.at(1), 0);
  EXPECT_EQ(row.at(12), 0);
}

TEST(RoundedShape, pixels_on_the_edges_are_covered_partly) {
  RoundedShape shape({0.25, 0.5, 10, 10}, 0);
  EXPECT_NEAR(shape.row(5).at(0), 0.75 * 255, 1);
  EXPECT_NEAR(shape.row(5).at(10), 0.25 * 255, 1);
  EXPECT_NEAR(shape.row(0).at(5), 0.5 * 255, 1);
  EXPECT_NEAR(shape.row(0).at(0), 0.375 * 255, 1);
}

TEST(RoundedShape, the_covered_area_is_that_of_the_rectangle_at_any_position) {
  for (const double offset : {0.0, 0.1, 0.33, 0.5, 0.77}) {
    RoundedShape shape({offset, offset * 2, 7.3, 5.6}, 0);
    EXPECT_NEAR(areaOf(shape), 7.3 * 5.6, 0.1) << offset;
  }
}

TEST(RoundedShape, corners_are_cut_off_as_by_a_quarter_circle) {
  RoundedShape shape({0, 0, 100, 100}, 20);
  // On the diagonal, a circle of radius 20 is 20 * (1 - 0.7071) = 5.86 from the corner.
  EXPECT_EQ(shape.row(4).at(4), 0);
  EXPECT_GT(shape.row(5).at(5), 0);
  EXPECT_EQ(shape.row(7).at(7), 255);
}

TEST(RoundedShape, corners_begin_earlier_than_a_quarter_circle) {
  RoundedShape shape({0, 0, 100, 100}, 20);
  // At the first of four heights in the top row, a circle of radius 20 is at 17.8.
  EXPECT_LT(shape.row(0).at(18), 255);
  EXPECT_EQ(shape.row(0).at(25), 255);
}

TEST(RoundedShape, the_four_corners_are_equal) {
  RoundedShape shape({0, 0, 40, 30}, 8);
  for (int y = 0; y < 10; ++y) {
    for (int x = 0; x < 10; ++x) {
      const int coverage = shape.row(y).at(x);
      EXPECT_EQ(shape.row(y).at(39 - x), coverage) << x << "," << y;
      EXPECT_EQ(shape.row(29 - y).at(x), coverage) << x << "," << y;
    }
  }
}

TEST(RoundedShape, corners_are_limited_to_half_of_the_shorter_side) {
  RoundedShape shape({0, 0, 5, 5}, 50);
  EXPECT_GT(areaOf(shape), 15);
  EXPECT_LT(areaOf(shape), 25);
  EXPECT_EQ(shape.row(2).at(2), 255);
}

TEST(RoundedShape, an_empty_rectangle_covers_nothing) {
  RoundedShape flat({3, 3, 10, -2}, 4);
  EXPECT_EQ(areaOf(flat), 0);
  RoundedShape thin({3, 3, 0, 10}, 4);
  EXPECT_EQ(areaOf(thin), 0);
}

}  // namespace
}  // namespace tessaly
