// Arithmetic on pixels of the form 0xAARRGGBB with colours multiplied by their alpha, the form of
// QImage::Format_ARGB32_Premultiplied.
#pragma once

#include <cstdint>

#include "look/Color.h"

namespace tessaly::Pixel {

// Each of the four channels times `factor` / 255, rounded.
constexpr std::uint32_t scaled(std::uint32_t pixel, std::uint32_t factor) {
  std::uint32_t even = (pixel & 0xFF00FFu) * factor + 0x800080u;
  even = ((even + ((even >> 8) & 0xFF00FFu)) >> 8) & 0xFF00FFu;
  std::uint32_t odd = ((pixel >> 8) & 0xFF00FFu) * factor + 0x800080u;
  odd = (odd + ((odd >> 8) & 0xFF00FFu)) & 0xFF00FF00u;
  return even | odd;
}

// `source` laid over `below`.
constexpr std::uint32_t over(std::uint32_t source, std::uint32_t below) {
  return source + scaled(below, 255 - (source >> 24));
}

// From channels of 0 to 1, already multiplied by `alpha`.
constexpr std::uint32_t fromParts(double alpha, double red, double green, double blue) {
  const auto channel = [](double part) { return static_cast<std::uint32_t>(part * 255 + 0.5); };
  return channel(alpha) << 24 | channel(red) << 16 | channel(green) << 8 | channel(blue);
}

constexpr std::uint32_t fromColor(const Color& color) {
  const double part = color.opacity / 255;
  return fromParts(color.opacity, color.red * part, color.green * part, color.blue * part);
}

// Where the channels stand in a pixel with lanes of 16 bits: blue, red, green and, on top, alpha.
inline constexpr std::uint64_t lanes = 0x00FF00FF00FF00FFu;

// The pixel with these channels.
constexpr std::uint32_t packed(std::uint64_t inLanes) {
  return static_cast<std::uint32_t>(inLanes | inLanes >> 24);
}

// over() for `count` pixels from `below` on, each with the one of `sources` that stands for it.
void layOver(std::uint32_t* below, const std::uint32_t* sources, int count);

}  // namespace tessaly::Pixel
