// The pixels of a part of the canvas, in an image: where tiles are painted without a QPainter,
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
  // An image for the pixels `area` of the canvas, at `scale` pixels a point; all clear.
  PixelCanvas(const QRect& area, double scale);

  const QRect& area() const { return area_; }
  double scale() const { return scale_; }
  const QImage& image() const { return image_; }

  // Nothing outside `clip`, in pixels of the canvas, is touched from now on.
  void setClip(const QRect& clip);
  const QRect& clip() const { return clip_; }

  // The rectangle, given in points, in pixels.
  Rect toPixels(const Rect& points) const;

  // The pixels of row `y` of the canvas, which must lie in the clip: index it by the x of the
  // canvas.
  std::uint32_t* row(int y) {
    return bits_ + static_cast<std::ptrdiff_t>(y - area_.y()) * stride_ - area_.x();
  }

  // Lays `color`, a premultiplied pixel, over all that `shape` covers.
  void fill(RoundedShape& shape, std::uint32_t color);

  // The same for what `outer` covers and `inner` does not.
  void fillBetween(RoundedShape& outer, RoundedShape& inner, std::uint32_t color);

  // A line of `width` pixels along the edge of the rounded rectangle, half of it on either side.
  void stroke(const Rect& rect, double radius, double width, std::uint32_t color);

  // Takes away what `shape` covers, so that what lies below the image shows.
  void erase(RoundedShape& shape);

  // Takes away what `shape` does not cover.
  void keep(RoundedShape& shape);

  // Lays `picture`, premultiplied, over the canvas with its top left at this pixel.
  void draw(const QImage& picture, int x, int y);

 private:
  QRect area_;
  QRect clip_;
  double scale_;
  QImage image_;
  std::uint32_t* bits_;
  std::ptrdiff_t stride_;
};

// The pixels that `rect` and `margin` around it reach, both in points, at `scale` pixels a point.
QRect pixelsAround(const Rect& rect, double margin, double scale);

// Lays `color` over `count` pixels from `first` on.
void blendSpan(std::uint32_t* first, int count, std::uint32_t color);

}  // namespace tessaly
