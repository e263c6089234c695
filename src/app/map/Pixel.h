// Arithmetic with premultiplied pixels in the form 0xAARRGGBB, that of
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

// `source` drawn over `below`.
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

// Sets `count` pixels to `color`, starting at `first`.
void fill(std::uint32_t* first, int count, std::uint32_t color);

// Replaces `count` pixels by over() with `color`, starting at `below`.
void layOver(std::uint32_t* below, int count, std::uint32_t color);

// Colours that decrease linearly from pixel to pixel.
struct Gradient {
  // Channels with 8 fractional bits.
  struct Color {
    std::uint16_t blue = 0;
    std::uint16_t green = 0;
    std::uint16_t red = 0;
    std::uint16_t alpha = 0;
  };
  Color first;
  Color step;  // the decrease per pixel
};

// The same with those colours, each scaled by `coverage`. None may become negative.
void layOver(std::uint32_t* below, int count, const Gradient& colors, std::uint8_t coverage);

}  // namespace tessaly::Pixel
