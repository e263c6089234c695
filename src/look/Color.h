// A colour as a plain value: sRGB channels of 0 to 255 and an opacity of 0 to 1.
#pragma once

#include <cstdint>

namespace tessaly {

struct Color {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;
  double opacity = 1;

  // The opaque colour with the code 0xRRGGBB.
  static constexpr Color fromRgb(std::uint32_t rgb) {
    return {static_cast<std::uint8_t>((rgb >> 16) & 0xFFu),
            static_cast<std::uint8_t>((rgb >> 8) & 0xFFu), static_cast<std::uint8_t>(rgb & 0xFFu)};
  }

  // This colour with its opacity multiplied by `factor`, so a colour that is already faint stays
  // fainter than others.
  constexpr Color atOpacity(double factor) const { return {red, green, blue, opacity * factor}; }

  friend constexpr bool operator==(const Color&, const Color&) = default;
};

}  // namespace tessaly
