#include "app/map/Glow.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "app/map/Pixel.h"

namespace tessaly {
namespace {

// In deviations of the Gaussian: further out a glow is below what a pixel can show.
constexpr double range = 2.5;
// The same inwards: further in it is as strong as a pixel can show.
constexpr double farInside = 3;

// Strengths of `count` pixels from `first` on, along one axis of the blurred rectangle.
std::vector<std::uint32_t> strengths(int first, int count, double low, double high,
                                     double deviation) {
  std::vector<std::uint32_t> values(static_cast<std::size_t>(std::max(count, 0)));
  const double unit = deviation * std::sqrt(2.0);
  const double far = deviation * farInside;
  for (std::size_t i = 0; i < values.size(); ++i) {
    const double middle = first + static_cast<double>(i) + 0.5;
    const bool isInside = middle - low > far && high - middle > far;
    const double part =
        isInside ? 1 : (std::erf((middle - low) / unit) - std::erf((middle - high) / unit)) / 2;
    values[i] = static_cast<std::uint32_t>(part * 255 + 0.5);
  }
  return values;
}

}  // namespace

double Glow::reach(double radius) {
  return radius * range;
}

double Glow::depth(double radius) {
  return radius * farInside;
}

Glow::Glow(const Rect& rect, const Color& color, double radius, double scale) {
  const double left = rect.x * scale;
  const double top = rect.y * scale;
  const double right = left + rect.width * scale;
  const double bottom = top + rect.height * scale;
  const double deviation = radius * scale;
  const double margin = reach(radius) * scale;
  area_ = QRect(QPoint(static_cast<int>(std::floor(left - margin)),
                       static_cast<int>(std::floor(top - margin))),
                QPoint(static_cast<int>(std::ceil(right + margin)) - 1,
                       static_cast<int>(std::ceil(bottom + margin)) - 1));
  columns_ = strengths(area_.x(), area_.width(), left, right, deviation);
  rows_ = strengths(area_.y(), area_.height(), top, bottom, deviation);
  for (std::size_t i = 0; i < colors_.size(); ++i) {
    colors_[i] = Pixel::fromColor(color.atOpacity(static_cast<double>(i) / 255));
  }
  const auto isFull = [](std::uint32_t strength) { return strength == 255; };
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
    // Where the strength does not change, a row is one span.
    const int from = std::clamp(fullFrom_, left, right);
    const int to = std::clamp(fullTo_, from, right);
    blend(left, from);
    blendSpan(pixels + from, to - from, colors_[strength]);
    blend(to, right);
  }
}

}  // namespace tessaly
