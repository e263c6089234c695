#include "app/map/Glow.h"

#include <algorithm>
#include <cstddef>

#include "app/controls/AlphaBlur.h"
#include "app/map/Pixel.h"

namespace tessaly {
namespace {

// In standard deviations of the Gaussian: beyond this, a glow is too faint for a pixel.
constexpr double range = 2.5;

// The strengths of `count` pixels from `first` on, along one axis of the blurred rectangle.
std::vector<std::uint8_t> strengths(int first, int count, double low, double high,
                                    double deviation) {
  std::vector<std::uint8_t> values;
  for (int x = first; x < first + count; ++x) {
    const double covered = std::min(x + 1.0, high) - std::max<double>(x, low);
    values.push_back(static_cast<std::uint8_t>(std::clamp(covered, 0.0, 1.0) * 255 + 0.5));
  }
  AlphaBlur::blurLine(values.data(), count, 1, deviation);
  return values;
}

}  // namespace

double Glow::reach(double radius) {
  return radius * range;
}

Glow::Glow(const Rect& rect, const Color& color, double radius, double scale) {
  const double deviation = radius * scale;
  area_ = pixelsAround(rect, reach(radius), scale);
  columns_ =
      strengths(area_.x(), area_.width(), rect.x * scale, (rect.x + rect.width) * scale, deviation);
  rows_ = strengths(area_.y(), area_.height(), rect.y * scale, (rect.y + rect.height) * scale,
                    deviation);
  for (std::size_t i = 0; i < colors_.size(); ++i) {
    colors_[i] = Pixel::fromColor(color.atOpacity(static_cast<double>(i) / 255));
  }
  const auto isFull = [](std::uint8_t strength) { return strength == 255; };
  const auto full = std::ranges::find_if(columns_, isFull);
  const auto fullEnd = std::find_if_not(full, columns_.end(), isFull);
  fullFrom_ = area_.x() + static_cast<int>(full - columns_.begin());
  fullTo_ = area_.x() + static_cast<int>(fullEnd - columns_.begin());
}

void Glow::paint(PixelCanvas& canvas) const {
  const QRect part = area_ & canvas.clip();
  const int left = part.left();
  const int right = part.right() + 1;
  for (int y = part.top(); y <= part.bottom(); ++y) {
    std::uint32_t* pixels = canvas.row(y);
    const std::uint32_t strength = rows_[static_cast<std::size_t>(y - area_.y())];
    const auto blend = [&](int from, int to) {
      for (int x = std::max(from, left); x < std::min(to, right); ++x) {
        const std::uint32_t column = columns_[static_cast<std::size_t>(x - area_.x())];
        pixels[x] = Pixel::over(colors_[column * strength / 255], pixels[x]);
      }
    };
    // Where the strength is constant, a row is one span.
    const int from = std::clamp(fullFrom_, left, right);
    const int to = std::clamp(fullTo_, from, right);
    blend(left, from);
    blendSpan(pixels + from, to - from, colors_[strength]);
    blend(to, right);
  }
}

}  // namespace tessaly
