#include "app/map/PixelCanvas.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <random>
#include <vector>

#include "app/map/Pixel.h"
#include "app/map/SampleTiles_test.h"

namespace tessaly {
namespace {

constexpr std::uint32_t red = 0xFFFF0000;
constexpr std::uint32_t halfWhite = 0x80808080;

TEST(Pixel, scales_every_channel_with_rounding) {
  for (std::uint32_t value = 0; value < 256; ++value) {
    for (std::uint32_t factor = 0; factor < 256; ++factor) {
      const std::uint32_t expected = (value * factor * 2 + 255) / 510;
      ASSERT_EQ(Pixel::scaled(value * 0x01010101u, factor), expected * 0x01010101u);
    }
  }
}

TEST(Pixel, is_put_together_from_its_channels_in_lanes) {
  EXPECT_EQ(Pixel::packed(0x0011003300220044u), 0x11223344u);
}

TEST(Pixel, of_a_whole_run_is_laid_over_as_each_would_be_alone) {
  std::mt19937 random(7);
  for (int count = 0; count < 70; ++count) {
    std::vector<std::uint32_t> sources, below, expected;
    for (int i = 0; i < count; ++i) {
      const std::uint32_t alpha = random() % 256;
      sources.push_back(alpha << 24 | Pixel::scaled(random() & 0xFFFFFFu, alpha));
      below.push_back(Pixel::scaled(random() | 0xFF000000u, random() % 256));
      expected.push_back(Pixel::over(sources.back(), below.back()));
    }
    Pixel::layOver(below.data(), sources.data(), count);
    ASSERT_EQ(below, expected) << count;
  }
}

TEST(PixelCanvas, lays_a_color_over_runs_of_the_same_and_over_single_pixels) {
  std::vector<std::uint32_t> pixels = {0, red, red, 0, 0, halfWhite, red};
  std::vector<std::uint32_t> expected;
  for (const std::uint32_t below : pixels) expected.push_back(Pixel::over(halfWhite, below));
  blendSpan(pixels.data(), static_cast<int>(pixels.size()), halfWhite);
  EXPECT_EQ(pixels, expected);
}

TEST(Pixel, of_a_colour_is_multiplied_by_its_opacity) {
  EXPECT_EQ(Pixel::fromColor(Color::fromRgb(0x0080FF)), 0xFF0080FFu);
  EXPECT_EQ(Pixel::fromColor(Color::fromRgb(0xFF0000).atOpacity(0.5)), 0x80800000u);
}

TEST(PixelCanvas, paints_where_the_shape_is_in_coordinates_of_the_canvas) {
  PixelCanvas canvas(QRect(100, 200, 10, 10), 1);
  RoundedShape shape({102, 203, 4, 2}, 0);
  canvas.fill(shape, red);
  EXPECT_EQ(pixelAt(canvas, 102, 203), "#ffff0000");
  EXPECT_EQ(pixelAt(canvas, 105, 204), "#ffff0000");
  EXPECT_EQ(pixelAt(canvas, 106, 204), "#00000000");
  EXPECT_EQ(pixelAt(canvas, 102, 205), "#00000000");
}

TEST(PixelCanvas, paints_nothing_outside_its_clip) {
  PixelCanvas canvas(QRect(0, 0, 10, 10), 1);
  canvas.setClip(QRect(3, 3, 2, 2));
  RoundedShape shape({-5, -5, 30, 30}, 3);
  canvas.fill(shape, red);
  EXPECT_EQ(pixelAt(canvas, 2, 3), "#00000000");
  EXPECT_EQ(pixelAt(canvas, 3, 3), "#ffff0000");
  EXPECT_EQ(pixelAt(canvas, 4, 4), "#ffff0000");
  EXPECT_EQ(pixelAt(canvas, 5, 4), "#00000000");
}

TEST(PixelCanvas, lays_colours_over_what_is_there) {
  PixelCanvas canvas(QRect(0, 0, 4, 4), 1);
  RoundedShape shape({0, 0, 4, 4}, 0);
  canvas.fill(shape, red);
  canvas.fill(shape, halfWhite);
  EXPECT_EQ(pixelAt(canvas, 1, 1), "#ffff8080");
}

TEST(PixelCanvas, strokes_half_on_either_side_of_the_edge) {
  PixelCanvas canvas(QRect(0, 0, 20, 20), 1);
  canvas.stroke({5, 5, 10, 10}, 0, 2, red);
  EXPECT_EQ(pixelAt(canvas, 10, 3), "#00000000");
  EXPECT_EQ(pixelAt(canvas, 10, 4), "#ffff0000");
  EXPECT_EQ(pixelAt(canvas, 10, 5), "#ffff0000");
  EXPECT_EQ(pixelAt(canvas, 10, 6), "#00000000");
  EXPECT_EQ(pixelAt(canvas, 4, 10), "#ffff0000");
  EXPECT_EQ(pixelAt(canvas, 15, 10), "#ffff0000");
  EXPECT_EQ(pixelAt(canvas, 10, 10), "#00000000");
}

TEST(PixelCanvas, strokes_parts_of_pixels_on_both_sides_of_the_line) {
  PixelCanvas canvas(QRect(0, 0, 20, 20), 1);
  canvas.stroke({5.25, 5.25, 9.5, 9.5}, 0, 1, red);
  EXPECT_EQ(pixelAt(canvas, 4, 10), "#40400000");
  EXPECT_EQ(pixelAt(canvas, 5, 10), "#bfbf0000");
  EXPECT_EQ(pixelAt(canvas, 6, 10), "#00000000");
  EXPECT_EQ(pixelAt(canvas, 14, 10), "#bfbf0000");
  EXPECT_EQ(pixelAt(canvas, 15, 10), "#40400000");
}

TEST(PixelCanvas, erases_what_a_shape_covers_and_keeps_what_it_covers) {
  PixelCanvas canvas(QRect(0, 0, 10, 10), 1);
  RoundedShape all({0, 0, 10, 10}, 0);
  RoundedShape part({2, 2, 4.5, 4}, 0);
  canvas.fill(all, red);
  canvas.erase(part);
  EXPECT_EQ(pixelAt(canvas, 3, 3), "#00000000");
  EXPECT_EQ(pixelAt(canvas, 6, 3), "#7f7f0000");
  EXPECT_EQ(pixelAt(canvas, 7, 3), "#ffff0000");
  canvas.fill(all, red);
  canvas.keep(part);
  EXPECT_EQ(pixelAt(canvas, 3, 3), "#ffff0000");
  EXPECT_EQ(pixelAt(canvas, 6, 3), "#80800000");
  EXPECT_EQ(pixelAt(canvas, 7, 3), "#00000000");
  EXPECT_EQ(pixelAt(canvas, 3, 9), "#00000000");
}

TEST(PixelCanvas, draws_a_picture_that_reaches_beyond_its_clip) {
  PixelCanvas canvas(QRect(0, 0, 10, 10), 1);
  QImage picture(20, 20, QImage::Format_ARGB32_Premultiplied);
  picture.fill(0xFF00FF00);
  canvas.setClip(QRect(4, 4, 3, 3));
  canvas.draw(picture, -5, -5);
  EXPECT_EQ(pixelAt(canvas, 3, 4), "#00000000");
  EXPECT_EQ(pixelAt(canvas, 4, 4), "#ff00ff00");
  EXPECT_EQ(pixelAt(canvas, 6, 6), "#ff00ff00");
  EXPECT_EQ(pixelAt(canvas, 7, 6), "#00000000");
}

}  // namespace
}  // namespace tessaly
