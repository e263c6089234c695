#include "app/map/PixelCanvas.h"

#include <algorithm>
#include <cmath>

#include "app/map/Pixel.h"

namespace tessaly {
namespace {

// Calls use(y, row) for the rows of `shape` inside `clip`.
template <typename Use>
void eachRow(RoundedShape& shape, const QRect& clip, Use use) {
  const int first = std::max(shape.firstRow(), clip.top());
  const int end = std::min(shape.endRow(), clip.bottom() + 1);
  for (int y = first; y < end; ++y) use(y, shape.row(y));
}

}  // namespace

QRect pixelsAround(const Rect& rect, double margin, double scale) {
  return {QPoint(static_cast<int>(std::floor((rect.x - margin) * scale)),
                 static_cast<int>(std::floor((rect.y - margin) * scale))),
          QPoint(static_cast<int>(std::ceil((rect.x + rect.width + margin) * scale)) - 1,
                 static_cast<int>(std::ceil((rect.y + rect.height + margin) * scale)) - 1)};
}

void blendSpan(std::uint32_t* first, int count, std::uint32_t color) {
  if (color >> 24 == 255) {
    Pixel::fill(first, count, color);
  } else {
    Pixel::layOver(first, count, color);
  }
}

PixelCanvas::PixelCanvas(const QRect& area, double scale)
    : area_(area),
      clip_(area),
      scale_(scale),
      image_(area.size(), QImage::Format_ARGB32_Premultiplied) {
  image_.fill(0);
  bits_ = reinterpret_cast<std::uint32_t*>(image_.bits());
  stride_ = image_.bytesPerLine() / static_cast<qsizetype>(sizeof(std::uint32_t));
}

void PixelCanvas::setClip(const QRect& clip) {
  clip_ = clip & area_;
}

Rect PixelCanvas::toPixels(const Rect& points) const {
  return {points.x * scale_, points.y * scale_, points.width * scale_, points.height * scale_};
}

void PixelCanvas::fill(RoundedShape& shape, std::uint32_t color) {
  const int left = clip_.left();
  const int right = clip_.right() + 1;
  eachRow(shape, clip_, [&](int y, const RoundedShape::Row& covered) {
    std::uint32_t* pixels = row(y);
    const auto blend = [&](int from, int to) {
      for (int x = std::max(from, left); x < std::min(to, right); ++x) {
        pixels[x] = Pixel::over(Pixel::scaled(color, covered.at(x)), pixels[x]);
      }
    };
    blend(covered.begin, covered.solidBegin);
    const int from = std::max(covered.solidBegin, left);
    const int to = std::min(covered.solidEnd, right);
    if (to > from) blendSpan(pixels + from, to - from, Pixel::scaled(color, covered.solid));
    blend(covered.solidEnd, covered.end);
  });
}

void PixelCanvas::fillBetween(RoundedShape& outer, RoundedShape& inner, std::uint32_t color) {
  const int left = clip_.left();
  const int right = clip_.right() + 1;
  eachRow(outer, clip_, [&](int y, const RoundedShape::Row& covered) {
    const RoundedShape::Row hole = inner.row(y);
    std::uint32_t* pixels = row(y);
    const auto blend = [&](int from, int to) {
      for (int x = std::max(from, left); x < std::min(to, right); ++x) {
        const int coverage = covered.at(x) - hole.at(x);
        if (coverage <= 0) continue;
        const auto part = Pixel::scaled(color, static_cast<std::uint32_t>(coverage));
        pixels[x] = Pixel::over(part, pixels[x]);
      }
    };
    if (hole.solidBegin < hole.solidEnd && hole.solid == covered.solid) {
      blend(covered.begin, hole.solidBegin);
      blend(hole.solidEnd, covered.end);
    } else {
      blend(covered.begin, covered.end);
    }
  });
}

void PixelCanvas::stroke(const Rect& rect, double radius, double width, std::uint32_t color) {
  const double half = width / 2;
  RoundedShape outer({rect.x - half, rect.y - half, rect.width + width, rect.height + width},
                     radius + half);
  RoundedShape inner({rect.x + half, rect.y + half, rect.width - width, rect.height - width},
                     radius - half);
  fillBetween(outer, inner, color);
}

void PixelCanvas::erase(RoundedShape& shape) {
  const int left = clip_.left();
  const int right = clip_.right() + 1;
  eachRow(shape, clip_, [&](int y, const RoundedShape::Row& covered) {
    std::uint32_t* pixels = row(y);
    const auto scale = [&](int from, int to) {
      for (int x = std::max(from, left); x < std::min(to, right); ++x) {
        pixels[x] = Pixel::scaled(pixels[x], 255u - covered.at(x));
      }
    };
    if (covered.solid == 255) {
      scale(covered.begin, covered.solidBegin);
      const int from = std::max(covered.solidBegin, left);
      const int to = std::min(covered.solidEnd, right);
      if (to > from) Pixel::fill(pixels + from, to - from, 0);
      scale(covered.solidEnd, covered.end);
    } else {
      scale(covered.begin, covered.end);
    }
  });
}

void PixelCanvas::keep(RoundedShape& shape) {
  const int left = clip_.left();
  const int right = clip_.right() + 1;
  for (int y = clip_.top(); y <= clip_.bottom(); ++y) {
    const RoundedShape::Row covered = shape.row(y);
    std::uint32_t* pixels = row(y);
    const auto scale = [&](int from, int to) {
      for (int x = std::max(from, left); x < std::min(to, right); ++x) {
        pixels[x] = Pixel::scaled(pixels[x], covered.at(x));
      }
    };
    if (covered.solid == 255 && covered.solidBegin < covered.solidEnd) {
      scale(left, covered.solidBegin);
      scale(covered.solidEnd, right);
    } else {
      scale(left, right);
    }
  }
}

void PixelCanvas::draw(const QImage& picture, int x, int y) {
  const QRect place = QRect(x, y, picture.width(), picture.height()) & clip_;
  for (int line = place.top(); line <= place.bottom(); ++line) {
    const auto* source =
        reinterpret_cast<const std::uint32_t*>(picture.constScanLine(line - y)) - x;
    std::uint32_t* pixels = row(line);
    for (int column = place.left(); column <= place.right(); ++column) {
      if (source[column] != 0) pixels[column] = Pixel::over(source[column], pixels[column]);
    }
  }
}

}  // namespace tessaly
