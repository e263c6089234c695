#include "app/map/BandPicture.h"

#include <array>
#include <cmath>

#include "app/map/Pixel.h"
#include "app/map/TilePainter.h"

namespace tessaly {
namespace {

constexpr double radius = 6;
constexpr double lineWidth = 1.5;
// Beyond this distance in points from the visible edge of a band, neither its corners nor those of
// the canvas have an effect.
constexpr double edgeWidth = 6;

PixelCanvas painted(const QRect& area, const Rect& band, QSizeF size, double scale) {
  PixelCanvas canvas(area, scale);
  const Rect rect = canvas.toPixels(band);
  RoundedShape shape(rect, radius * scale);
  canvas.fill(shape, Pixel::fromColor(BandPicture::fill));
  canvas.stroke(rect, radius * scale, lineWidth * scale, Pixel::fromColor(MarrowTheme::accent));
  TilePainter::cutCorners(canvas, size);
  return canvas;
}

}  // namespace

BandPicture BandPicture::of(const Rect& band, QSizeF size, double scale) {
  const QRect all = pixelsAround({0, 0, size.width(), size.height()}, 0, scale);
  const QRect seen = pixelsAround(band, lineWidth / 2, scale) & all;
  BandPicture picture;
  if (seen.isEmpty()) return picture;
  const int edge = static_cast<int>(std::ceil(edgeWidth * scale));
  const QRect inside = seen.adjusted(edge, edge, -edge, -edge);
  if (inside.isEmpty()) {
    picture.edges.push_back(painted(seen, band, size, scale));
    return picture;
  }
  picture.inside = inside;
  const std::array strips = {
      QRect(seen.topLeft(), QSize(seen.width(), edge)),
      QRect(QPoint(seen.left(), inside.bottom() + 1), QSize(seen.width(), edge)),
      QRect(QPoint(seen.left(), inside.top()), QSize(edge, inside.height())),
      QRect(QPoint(inside.right() + 1, inside.top()), QSize(edge, inside.height()))};
  for (const QRect& strip : strips) picture.edges.push_back(painted(strip, band, size, scale));
  return picture;
}

}  // namespace tessaly
