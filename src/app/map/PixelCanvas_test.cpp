#include "app/map/PixelCanvas.h"

#include <algorithm>
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

TEST(Pixel, scaling_a_pixel_rounds_every_channel) {
  for (std::uint32_t value = 0; value < 256; ++value) {
    for (std::uint32_t factor = 0; factor < 256; ++factor) {
      const std::uint32_t expected = (value * factor * 2 + 255) / 510;
      ASSERT_EQ(Pixel::scaled(value * 0x01010101u, factor), expected * 0x01010101u);
    }
  }
}

// Random pixels, some of them opaque.
std::vector<std::uint32_t> somePixels(int count, std::mt19937& random) {
  std::vector<std::uint32_t> pixels;
  for (int i = 0; i < count; ++i) {
    pixels.push_back(Pixel::scaled(random() | 0xFF000000u, i % 3 == 0 ? 255 : random() % 256));
  }
  return pixels;
}

TEST(Pixel, drawing_over_a_run_equals_drawing_over_each_pixel) {
  std::mt19937 random(7);
  for (int count = 0; count < 20; ++count) {
    const std::uint32_t color = Pixel::scaled(random() | 0xFF000000u, random() % 256);
    std::vector<std::uint32_t> pixels = somePixels(count, random);
    std::vector<std::uint32_t> expected;
    for (const std::uint32_t below : pixels) expected.push_back(Pixel::over(color, below));
    Pixel::layOver(pixels.data(), count, color);
    ASSERT_EQ(pixels, expected) << count;
  }
}

TEST(Pixel, drawing_a_gradient_over_a_run_equals_drawing_its_colours) {
  std::mt19937 random(7);
  for (int count = 0; count < 70; ++count) {
    const std::uint8_t coverage = count % 2 == 0 ? 255 : static_cast<std::uint8_t>(random());
    // Decreases by 0.5, 1, 1.25 and 0.875.
    const Pixel::Gradient colors{
        .first = {.blue = 0x9080, .green = 0xA000, .red = 0xC8FF, .alpha = 0xE680},
        .step = {.blue = 0x80, .green = 0x100, .red = 0x140, .alpha = 0xE0}};
    std::vector<std::uint32_t> pixels = somePixels(count, random);
    std::vector<std::uint32_t> expected;
    for (std::uint32_t i = 0; i < pixels.size(); ++i) {
      const std::uint32_t color = (0xE680 - i * 0xE0) >> 8 << 24 | (0xC8FF - i * 0x140) >> 8 << 16 |
                                  (0xA000 - i * 0x100) >> 8 << 8 | (0x9080 - i * 0x80) >> 8;
      expected.push_back(Pixel::over(Pixel::scaled(color, coverage), pixels[i]));
    }
    Pixel::layOver(pixels.data(), count, colors, coverage);
    ASSERT_EQ(pixels, expected) << count;
  }
}

TEST(Pixel, filling_a_run_sets_no_pixel_beyond_it) {
  for (int count = 0; count < 20; ++count) {
    std::vector<std::uint32_t> pixels(21, halfWhite);
    std::vector<std::uint32_t> expected = pixels;
    Pixel::fill(pixels.data(), count, red);
    std::fill_n(expected.begin(), count, red);
    ASSERT_EQ(pixels, expected) << count;
  }
}

TEST(PixelCanvas, an_opaque_span_replaces_the_pixels) {
  std::vector<std::uint32_t> pixels = {0, halfWhite, red};
  blendSpan(pixels.data(), 2, 0xFF00FF00);
  EXPECT_EQ(pixels, (std::vector<std::uint32_t>{0xFF00FF00, 0xFF00FF00, red}));
}

TEST(Pixel, a_colour_is_premultiplied_by_its_opacity) {
  EXPECT_EQ(Pixel::fromColor(Color::fromRgb(0x0080FF)), 0xFF0080FFu);
  EXPECT_EQ(Pixel::fromColor(Color::fromRgb(0xFF0000).atOpacity(0.5)), 0x80800000u);
}

TEST(PixelCanvas, shapes_are_in_coordinates_of_the_canvas) {
  PixelCanvas canvas(QRect(100, 200, 10, 10), 1);
  RoundedShape shape({102, 203, 4, 2}, 0);
  canvas.fill(shape, red);
  EXPECT_EQ(pixelAt(canvas, 102, 203), "#ffff0000");
  EXPECT_EQ(pixelAt(canvas, 105, 204), "#ffff0000");
  EXPECT_EQ(pixelAt(canvas, 106, 204), "#00000000");
  EXPECT_EQ(pixelAt(canvas, 102, 205), "#00000000");
}

TEST(PixelCanvas, nothing_is_drawn_outside_the_clip) {
  PixelCanvas canvas(QRect(0, 0, 10, 10), 1);
  canvas.setClip(QRect(3, 3, 2, 2));
  RoundedShape shape({-5, -5, 30, 30}, 3);
  canvas.fill(shape, red);
  EXPECT_EQ(pixelAt(canvas, 2, 3), "#00000000");
  EXPECT_EQ(pixelAt(canvas, 3, 3), "#ffff0000");
  EXPECT_EQ(pixelAt(canvas, 4, 4), "#ffff0000");
  EXPECT_EQ(pixelAt(canvas, 5, 4), "#00000000");
}

TEST(PixelCanvas, translucent_colours_are_blended_with_the_pixels) {
  PixelCanvas canvas(QRect(0, 0, 4, 4), 1);
  RoundedShape shape({0, 0, 4, 4}, 0);
  canvas.fill(shape, red);
  canvas.fill(shape, halfWhite);
  EXPECT_EQ(pixelAt(canvas, 1, 1), "#ffff8080");
}

TEST(PixelCanvas, a_stroke_is_half_on_each_side_of_the_edge) {
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

TEST(PixelCanvas, a_stroke_covers_parts_of_pixels_on_both_sides) {
  PixelCanvas canvas(QRect(0, 0, 20, 20), 1);
  canvas.stroke({5.25, 5.25, 9.5, 9.5}, 0, 1, red);
  EXPECT_EQ(pixelAt(canvas, 4, 10), "#40400000");
  EXPECT_EQ(pixelAt(canvas, 5, 10), "#bfbf0000");
  EXPECT_EQ(pixelAt(canvas, 6, 10), "#00000000");
  EXPECT_EQ(pixelAt(canvas, 14, 10), "#bfbf0000");
  EXPECT_EQ(pixelAt(canvas, 15, 10), "#40400000");
}

TEST(PixelCanvas, erase_clears_the_area_of_a_shape_and_keep_the_rest) {
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

TEST(PixelCanvas, a_picture_is_clipped) {
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
