#include "picture/PictureComparison.h"

#include <algorithm>
#include <cstdlib>

namespace tessaly::PictureComparison {

namespace {

constexpr int cell = 16;  // pixels; differences in neighbouring cells are reported as one area
constexpr std::size_t mostPlaces = 12;

int distance(QRgb one, QRgb other) {
  return std::max({std::abs(qRed(one) - qRed(other)), std::abs(qGreen(one) - qGreen(other)),
                   std::abs(qBlue(one) - qBlue(other))});
}

bool isIn(const std::vector<QRect>& areas, int x, int y) {
  return std::ranges::any_of(areas, [&](const QRect& area) { return area.contains(x, y); });
}

// Groups differing pixels into areas.
class Places {
 public:
  Places(int width, int height)
      : columns_((width + cell - 1) / cell),
        cells_(static_cast<std::size_t>(columns_) *
               static_cast<std::size_t>((height + cell - 1) / cell)) {}

  void add(int x, int y) { at(x / cell, y / cell) |= QRect(x, y, 1, 1); }

  std::vector<QRect> take() {
    std::vector<QRect> places;
    for (std::size_t i = 0; i < cells_.size(); ++i) {
      if (cells_[i].isNull()) continue;
      places.push_back(joined(static_cast<int>(i) % columns_, static_cast<int>(i) / columns_));
    }
    return places;
  }

 private:
  QRect& at(int column, int row) {
    const int index = row * columns_ + column;
    return cells_[static_cast<std::size_t>(index)];
  }

  // The area of the cell and all cells connected to it, which are cleared.
  QRect joined(int column, int row) {
    const int rows = static_cast<int>(cells_.size()) / columns_;
    QRect all;
    std::vector<QPoint> waiting = {{column, row}};
    while (!waiting.empty()) {
      const QPoint next = waiting.back();
      waiting.pop_back();
      QRect& here = at(next.x(), next.y());
      if (here.isNull()) continue;
      all |= here;
      here = QRect();
      for (int y = std::max(next.y() - 1, 0); y <= std::min(next.y() + 1, rows - 1); ++y) {
        for (int x = std::max(next.x() - 1, 0); x <= std::min(next.x() + 1, columns_ - 1); ++x)
          waiting.emplace_back(x, y);
      }
    }
    return all;
  }

  int columns_;
  std::vector<QRect> cells_;
};

std::string described(const QRect& place) {
  return std::to_string(place.x()) + "," + std::to_string(place.y()) + " " +
         std::to_string(place.width()) + "x" + std::to_string(place.height());
}

}  // namespace

PictureDifference differenceOf(const QImage& kept, const QImage& seen,
                               const std::vector<QRect>& known) {
  PictureDifference difference;
  difference.isOtherSize = kept.size() != seen.size();
  if (difference.isOtherSize) return difference;
  Places places(kept.width(), kept.height());
  for (int y = 0; y < kept.height(); ++y) {
    for (int x = 0; x < kept.width(); ++x) {
      const int by = distance(kept.pixel(x, y), seen.pixel(x, y));
      if (by == 0 || isIn(known, x, y)) continue;
      difference.largest = std::max(difference.largest, by);
      if (by <= mostInAChannel) continue;
      ++difference.pixels;
      places.add(x, y);
    }
  }
  difference.places = places.take();
  return difference;
}

bool isSame(const PictureDifference& difference) {
  return !difference.isOtherSize && difference.pixels <= mostPixels;
}

std::string described(const PictureDifference& difference) {
  if (difference.isOtherSize) return "another size";
  std::string text = std::to_string(difference.pixels) + " pixels differ by up to " +
                     std::to_string(difference.largest);
  const std::size_t told = std::min(difference.places.size(), mostPlaces);
  for (std::size_t i = 0; i < told; ++i)
    text += (i == 0 ? ": " : "; ") + described(difference.places[i]);
  if (told < difference.places.size())
    text += "; and " + std::to_string(difference.places.size() - told) + " more places";
  return text;
}

QImage pictureOfDifference(const QImage& kept, const QImage& seen) {
  if (kept.size() != seen.size()) return seen;
  constexpr QRgb glaring = qRgb(255, 0, 200);
  QImage picture(kept.size(), QImage::Format_RGB32);
  for (int y = 0; y < kept.height(); ++y) {
    for (int x = 0; x < kept.width(); ++x) {
      const int grey = qGray(kept.pixel(x, y)) / 3;
      const bool isOff = distance(kept.pixel(x, y), seen.pixel(x, y)) > mostInAChannel;
      picture.setPixel(x, y, isOff ? glaring : qRgb(grey, grey, grey));
    }
  }
  return picture;
}

}  // namespace tessaly::PictureComparison
