#include "app/map/TextShadow.h"

#include <cmath>
#include <cstdint>

#include "app/controls/AlphaBlur.h"
#include "app/map/Pixel.h"

namespace tessaly::TextShadow {
namespace {

constexpr double deviation = 2;
constexpr double down = 1;
constexpr double opacity = 0.7;

int shift(double scale) {
  return static_cast<int>(std::lround(down * scale));
}

}  // namespace

int margin(double scale) {
  return AlphaBlur::margin(deviation * scale) + shift(scale);
}

void layUnder(QImage& picture, double scale) {
  QImage shadow = picture.convertToFormat(QImage::Format_Alpha8);
  AlphaBlur::blur(shadow, deviation * scale);
  const int first = shift(scale);
  for (int y = first; y < picture.height(); ++y) {
    auto* const pixels = reinterpret_cast<std::uint32_t*>(picture.scanLine(y));
    const uchar* const row = shadow.constScanLine(y - first);
    for (int x = 0; x < picture.width(); ++x) {
      const auto shade = static_cast<std::uint32_t>(row[x] * opacity + 0.5);
      pixels[x] = Pixel::over(pixels[x], shade << 24);
    }
  }
}

}  // namespace tessaly::TextShadow
