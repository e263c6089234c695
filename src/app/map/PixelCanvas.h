// The pixels of a part of the canvas, in an image. Tiles are painted into it without QPainter,
// whose rounded gradient fills are several times slower. One thread at a time.
#pragma once

#include <cstdint>

#include <QImage>
#include <QRect>

#include "app/map/RoundedShape.h"
#include "treemap/Rect.h"

namespace tessaly {

class PixelCanvas {
 public:
  // A transparent image for the pixels `area` of the canvas, at `scale` pixels per point.
  PixelCanvas(const QRect& area, double scale);

  const QRect& area() const { return area_; }
  double scale() const { return scale_; }
  const QImage& image() const { return image_; }

  // Limits later drawing to `clip`, in pixels of the canvas.
  void setClip(const QRect& clip);
  const QRect& clip() const { return clip_; }

  // Converts a rectangle from points to pixels.
  Rect toPixels(const Rect& points) const;

  // The pixels of row `y` of the canvas, which must be in the clip; the index is the x of the
  // canvas.
  std::uint32_t* row(int y) {
    return bits_ + static_cast<std::ptrdiff_t>(y - area_.y()) * stride_ - area_.x();
  }

  // Draws `color`, a premultiplied pixel, over the area of `shape`.
  void fill(RoundedShape& shape, std::uint32_t color);

  // The same for the area of `outer` without that of `inner`.
  void fillBetween(RoundedShape& outer, RoundedShape& inner, std::uint32_t color);

  // Draws a line of `width` pixels along the edge of the rounded rectangle, half of it on each
  // side.
  void stroke(const Rect& rect, double radius, double width, std::uint32_t color);

  // Makes the area of `shape` transparent.
  void erase(RoundedShape& shape);

  // Makes the area outside of `shape` transparent.
  void keep(RoundedShape& shape);

  // Draws `picture`, premultiplied, over the canvas with its top left corner at this pixel.
  void draw(const QImage& picture, int x, int y);

 private:
  QRect area_;
  QRect clip_;
  double scale_;
  QImage image_;
  std::uint32_t* bits_;
  std::ptrdiff_t stride_;
};

// The pixels touched by `rect` with `margin` around it, both in points, at `scale` pixels per
// point.
QRect pixelsAround(const Rect& rect, double margin, double scale);

// Draws `color` over `count` pixels, starting at `first`.
void blendSpan(std::uint32_t* first, int count, std::uint32_t color);

}  // namespace tessaly
