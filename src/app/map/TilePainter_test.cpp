#include "app/map/TilePainter.h"

#include <cmath>
#include <gtest/gtest.h>

#include "app/map/Pixel.h"
#include "app/map/SampleTiles_test.h"
#include "look/MarrowTheme.h"

namespace tessaly {
namespace {

constexpr Color tint = Color::fromRgb(0x3B82F6);

// A tile of 200 by 100 points at (50, 50) on a background of `bg`.
class TilePainterTest : public ::testing::Test {
 protected:
  CanvasTile tile() const {
    CanvasTile made{tileRect(fileNode("/a", 1), 200, 100), tint};
    made.rect.x = made.rect.y = 50;
    return made;
  }

  PixelCanvas painted(const CanvasTile& shown, bool highlighted, double scale = 1) {
    PixelCanvas canvas(QRect(0, 0, static_cast<int>(300 * scale), static_cast<int>(200 * scale)),
                       scale);
    TilePainter::paintGround(canvas, {300, 200});
    if (const auto glow = TilePainter::glowOf(shown, highlighted, scale)) glow->paint(canvas);
    TilePainter::paintBody(canvas, shown, highlighted);
    return canvas;
  }

  static Color over(const Color& top, const Color& below) {
    const auto mix = [&](int a, int b) {
      return static_cast<std::uint8_t>(std::lround(a * top.opacity + b * (1 - top.opacity)));
    };
    return {mix(top.red, below.red), mix(top.green, below.green), mix(top.blue, below.blue)};
  }

  static void expectNear(const PixelCanvas& canvas, int x, int y, const Color& expected,
                         int tolerance = 2) {
    const auto pixel = reinterpret_cast<const std::uint32_t*>(canvas.image().constScanLine(y))[x];
    EXPECT_LE(difference(pixel, Pixel::fromColor(expected)), tolerance)
        << pixelAt(canvas, x, y) << " at " << x << "," << y;
  }

  // The fill's opacity at `x` and `y`, relative to the width and the height.
  static double fillOpacity(double x, double y) {
    return 0.92 - 0.22 * (x * 200 * 200 + y * 100 * 100) / (200 * 200 + 100 * 100);
  }
};

TEST_F(TilePainterTest, the_opacity_of_the_fill_decreases_from_corner_to_corner) {
  const PixelCanvas canvas = painted(tile(), false);
  // Below the middle there is no sheen.
  expectNear(canvas, 60, 130, over(tint.atOpacity(fillOpacity(0.0525, 0.805)), MarrowTheme::bg));
  expectNear(canvas, 150, 110, over(tint.atOpacity(fillOpacity(0.5025, 0.605)), MarrowTheme::bg));
  expectNear(canvas, 240, 140, over(tint.atOpacity(fillOpacity(0.9525, 0.905)), MarrowTheme::bg));
}

TEST_F(TilePainterTest, the_upper_half_has_a_sheen) {
  const PixelCanvas canvas = painted(tile(), false);
  const Color fill = over(tint.atOpacity(fillOpacity(0.5025, 0.105)), MarrowTheme::bg);
  expectNear(canvas, 150, 60, over(MarrowTheme::ink.atOpacity(0.12 * (1 - 2 * 0.105)), fill));
}

TEST_F(TilePainterTest, a_plain_tile_is_outlined_in_its_own_colour) {
  const PixelCanvas plain = painted(tile(), false);
  // The line is centred on the edge, so half of it is outside, over the background.
  expectNear(plain, 49, 120, over(tint.atOpacity(0.4 * 0.5), MarrowTheme::bg));
  expectNear(plain, 47, 120, MarrowTheme::bg, 0);
}

TEST_F(TilePainterTest, a_highlighted_tile_has_a_white_outline_of_two_points) {
  const PixelCanvas canvas = painted(tile(), true);
  const Color ground = over(tint.atOpacity(0.6 * 0.47), MarrowTheme::bg);
  expectNear(canvas, 49, 100, over(MarrowTheme::ink.atOpacity(0.7), ground), 4);
}

TEST_F(TilePainterTest, a_highlighted_tile_has_a_white_wash) {
  const PixelCanvas canvas = painted(tile(), true);
  const Color glow = over(tint.atOpacity(0.6), MarrowTheme::bg);
  const Color fill = over(tint.atOpacity(fillOpacity(0.5025, 0.605)), glow);
  expectNear(canvas, 150, 110, over(MarrowTheme::ink.atOpacity(0.06), fill));
}

TEST_F(TilePainterTest, a_selected_tile_is_marked_in_the_accent) {
  CanvasTile selected = tile();
  selected.tint = Color::fromRgb(0x22C55E);
  selected.selected = true;
  const PixelCanvas canvas = painted(selected, false);
  expectNear(canvas, 49, 100, MarrowTheme::accent);
  expectNear(canvas, 50, 100, MarrowTheme::accent);
  const Color glow = over(MarrowTheme::accent.atOpacity(0.6), MarrowTheme::bg);
  const Color fill = over(selected.tint.atOpacity(fillOpacity(0.5025, 0.605)), glow);
  expectNear(canvas, 150, 110, over(MarrowTheme::ink.atOpacity(0.12), fill));
}

TEST_F(TilePainterTest, a_selected_tile_looks_the_same_when_highlighted) {
  CanvasTile selected = tile();
  selected.selected = true;
  EXPECT_EQ(painted(selected, true).image(), painted(selected, false).image());
}

TEST_F(TilePainterTest, a_highlighted_tile_glows_and_a_plain_one_does_not) {
  expectNear(painted(tile(), false), 45, 100, MarrowTheme::bg, 0);
  // 4.5 points from the edge: three quarters of a deviation, where 0.227 of the strength is left.
  expectNear(painted(tile(), true), 45, 100, over(tint.atOpacity(0.6 * 0.227), MarrowTheme::bg));
}

TEST_F(TilePainterTest, tiles_look_the_same_at_two_pixels_per_point) {
  const PixelCanvas once = painted(tile(), true);
  const PixelCanvas twice = painted(tile(), true, 2);
  for (const QPoint point : {QPoint(45, 100), QPoint(80, 80), QPoint(150, 110), QPoint(240, 140)}) {
    const auto a =
        reinterpret_cast<const std::uint32_t*>(once.image().constScanLine(point.y()))[point.x()];
    const auto b = reinterpret_cast<const std::uint32_t*>(
        twice.image().constScanLine(point.y() * 2))[point.x() * 2];
    EXPECT_LE(difference(a, b), 3) << point.x() << "," << point.y();
  }
}

TEST_F(TilePainterTest, a_faint_colour_stays_faint) {
  CanvasTile faint = tile();
  faint.tint = tint.atOpacity(0.28);
  const PixelCanvas canvas = painted(faint, false);
  expectNear(canvas, 150, 110,
             over(tint.atOpacity(0.28 * fillOpacity(0.5025, 0.605)), MarrowTheme::bg));
}

TEST_F(TilePainterTest, the_canvas_has_rounded_corners_and_a_faint_outline) {
  PixelCanvas canvas(QRect(0, 0, 300, 200), 1);
  TilePainter::paintGround(canvas, {300, 200});
  TilePainter::paintOutline(canvas, {300, 200});
  TilePainter::cutCorners(canvas, {300, 200});
  EXPECT_EQ(pixelAt(canvas, 0, 0), "#00000000");
  EXPECT_EQ(pixelAt(canvas, 299, 199), "#00000000");
  expectNear(canvas, 150, 0, over(MarrowTheme::ink.atOpacity(0.08), MarrowTheme::bg));
  expectNear(canvas, 150, 1, MarrowTheme::bg, 0);
  expectNear(canvas, 6, 6, MarrowTheme::bg, 0);
}

}  // namespace
}  // namespace tessaly
