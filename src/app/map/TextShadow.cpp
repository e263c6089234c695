#include "app/map/TextShadow.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "app/map/Pixel.h"

namespace tessaly::TextShadow {
namespace {

constexpr double deviation = 2;
constexpr double down = 1;
constexpr double opacity = 0.7;

// Weights of the pixels to either side, 0 to 65536 in sum.
std::vector<std::uint32_t> kernel(double scale) {
  const double sigma = deviation * scale;
  const int radius = static_cast<int>(std::ceil(sigma * 2.5));
  std::vector<double> weights;
  double sum = 0;
  for (int i = -radius; i <= radius; ++i) {
    weights.push_back(std::exp(-i * i / (2 * sigma * sigma)));
    sum += weights.back();
  }
  std::vector<std::uint32_t> result;
  for (const double weight : weights) {
    result.push_back(static_cast<std::uint32_t>(weight / sum * 65536 + 0.5));
  }
  return result;
}

// Blurs `count` values along a line, of which there are `lines` side by side: value i of line l
// stands at i * step + l * lineStep.
void blur(const std::vector<std::uint32_t>& weights, const std::vector<std::uint8_t>& from,
          std::vector<std::uint8_t>& to, int width, int height, int stepX, int stepY) {
  const int radius = static_cast<int>(weights.size()) / 2;
  const std::uint32_t* const middle = weights.data() + radius;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const int along = stepX != 0 ? x : y;
      const int length = stepX != 0 ? width : height;
      const int first = std::max(-radius, -along);
      const int last = std::min(radius, length - 1 - along);
      std::uint32_t sum = 32768;
      const std::ptrdiff_t center = std::ptrdiff_t{y} * width + x;
      const std::ptrdiff_t step = stepX + std::ptrdiff_t{stepY} * width;
      for (int i = first; i <= last; ++i) sum += middle[i] * from.data()[center + i * step];
      to.data()[center] = static_cast<std::uint8_t>(std::min(sum >> 16, 255u));
    }
  }
}

}  // namespace

int margin(double scale) {
  return static_cast<int>(std::ceil((deviation * 2.5 + down) * scale));
}

void layUnder(QImage& picture, double scale) {
  const int width = picture.width();
  const int height = picture.height();
  const auto pixelsOf = [&picture](int y) {
    return reinterpret_cast<std::uint32_t*>(picture.scanLine(y));
  };
  std::vector<std::uint8_t> alpha(static_cast<std::size_t>(width) *
                                  static_cast<std::size_t>(height));
  std::vector<std::uint8_t> blurred(alpha.size());
  for (int y = 0; y < height; ++y) {
    const std::uint32_t* pixels = pixelsOf(y);
    std::uint8_t* const row = alpha.data() + std::ptrdiff_t{y} * width;
    for (int x = 0; x < width; ++x) {
      row[x] = static_cast<std::uint8_t>(pixels[x] >> 24);
    }
  }
  const auto weights = kernel(scale);
  blur(weights, alpha, blurred, width, height, 1, 0);
  blur(weights, blurred, alpha, width, height, 0, 1);

  const int shift = static_cast<int>(std::lround(down * scale));
  for (int y = shift; y < height; ++y) {
    std::uint32_t* pixels = pixelsOf(y);
    const std::uint8_t* const row = alpha.data() + std::ptrdiff_t{y - shift} * width;
    for (int x = 0; x < width; ++x) {
      const double shade = row[x] * opacity;
      pixels[x] = Pixel::over(pixels[x], static_cast<std::uint32_t>(shade + 0.5) << 24);
    }
  }
}

}  // namespace tessaly::TextShadow
