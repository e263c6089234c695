#include "app/map/BandPicture.h"

#include <gtest/gtest.h>

#include "app/map/Pixel.h"
#include "app/map/SampleTiles_test.h"
#include "app/map/TilePainter.h"

namespace tessaly {
namespace {

constexpr QSizeF size(300, 200);

// The expected picture, painted in one piece.
QImage whole(const Rect& band, double scale) {
  PixelCanvas canvas(
      QRect(0, 0, static_cast<int>(size.width() * scale), static_cast<int>(size.height() * scale)),
      scale);
  RoundedShape shape(canvas.toPixels(band), 6 * scale);
  canvas.fill(shape, Pixel::fromColor(MarrowTheme::accent.atOpacity(0.15)));
  canvas.stroke(canvas.toPixels(band), 6 * scale, 1.5 * scale,
                Pixel::fromColor(MarrowTheme::accent));
  TilePainter::cutCorners(canvas, size);
  return canvas.image();
}

// The pieces put together; each pixel must come from only one of them.
QImage composed(const Rect& band, double scale) {
  const BandPicture picture = BandPicture::of(band, size, scale);
  QImage image(
      QSize(static_cast<int>(size.width() * scale), static_cast<int>(size.height() * scale)),
      QImage::Format_ARGB32_Premultiplied);
  image.fill(0);
  QRect covered = picture.inside;
  for (int y = covered.top(); y <= covered.bottom(); ++y) {
    for (int x = covered.left(); x <= covered.right(); ++x) {
      reinterpret_cast<std::uint32_t*>(image.scanLine(y))[x] = Pixel::fromColor(BandPicture::fill);
    }
  }
  for (const PixelCanvas& edge : picture.edges) {
    EXPECT_FALSE(edge.area().intersects(picture.inside));
    EXPECT_TRUE(image.rect().contains(edge.area()));
    for (int y = edge.area().top(); y <= edge.area().bottom(); ++y) {
      for (int x = edge.area().left(); x <= edge.area().right(); ++x) {
        auto& pixel = reinterpret_cast<std::uint32_t*>(image.scanLine(y))[x];
        EXPECT_EQ(pixel, 0U) << "painted twice: " << x << "," << y;
        pixel = edge.image().pixel(x - edge.area().x(), y - edge.area().y()) == 0
                    ? 0
                    : reinterpret_cast<const std::uint32_t*>(
                          edge.image().constScanLine(y - edge.area().y()))[x - edge.area().x()];
      }
    }
  }
  return image;
}

TEST(BandPicture, the_pieces_of_a_band_make_the_whole_band) {
  for (const double scale : {1.0, 1.5, 2.0}) {
    for (const Rect& band :
         {Rect{50, 40, 120, 90}, Rect{50.3, 40.7, 120.2, 90.9}, Rect{10, 10, 26, 26},
          Rect{100, 100, 5, 5}, Rect{100, 100, 60, 0}, Rect{100, 20, 2, 150}, Rect{40, 40, 0, 0}}) {
      EXPECT_EQ(composed(band, scale), whole(band, scale))
          << band.x << "," << band.y << " " << band.width << " by " << band.height << " at "
          << scale;
    }
  }
}

TEST(BandPicture, the_band_ends_at_the_rounded_edge_of_the_canvas) {
  for (const double scale : {1.0, 2.0}) {
    for (const Rect& band : {Rect{-40, -30, 500, 400}, Rect{-10, 150, 100, 80}, Rect{3, 3, 80, 80},
                             Rect{0, 0, 300, 200}, Rect{280, -5, 40, 15}}) {
      EXPECT_EQ(composed(band, scale), whole(band, scale)) << band.x << "," << band.y;
    }
  }
  const QImage all = composed({-40, -30, 500, 400}, 1);
  EXPECT_EQ(qAlpha(all.pixel(0, 0)), 0);
  EXPECT_EQ(qAlpha(all.pixel(299, 199)), 0);
  EXPECT_EQ(qAlpha(all.pixel(150, 0)), 38);
}

TEST(BandPicture, a_band_outside_the_canvas_has_no_pixels) {
  const BandPicture picture = BandPicture::of({-50, 20, 40, 40}, size, 1);
  EXPECT_TRUE(picture.edges.empty());
  EXPECT_TRUE(picture.inside.isEmpty());
}

TEST(BandPicture, the_band_is_faint_accent_with_an_accent_line_of_a_point_and_a_half) {
  const QImage band = composed({50, 40, 120, 90}, 2);
  const auto alpha = [&](int x) { return qAlpha(band.pixel(x, 170)); };
  EXPECT_EQ(alpha(98), 128);  // the line covers half of this pixel
  EXPECT_EQ(alpha(99), 255);
  EXPECT_EQ(alpha(100), 255);
  EXPECT_GT(alpha(101), 128);
  EXPECT_EQ(alpha(102), 38);
  EXPECT_EQ(alpha(97), 0);
  EXPECT_EQ(band.pixel(100, 170), QColor(0x00, 0x7A, 0xFF).rgba());
  // The corner is rounded with a radius of 6.
  EXPECT_EQ(qAlpha(band.pixel(100, 80)), 0);
}

TEST(BandPicture, little_of_a_large_band_is_painted) {
  const BandPicture picture = BandPicture::of({10, 10, 280, 180}, size, 1);
  int painted = 0;
  for (const PixelCanvas& edge : picture.edges) {
    painted += edge.area().width() * edge.area().height();
  }
  EXPECT_LT(painted, 6 * 2 * (282 + 182));
}

}  // namespace
}  // namespace tessaly
