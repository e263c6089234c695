#include "app/map/Pixel.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace tessaly::Pixel {
namespace {

static_assert(std::endian::native == std::endian::little);

// Both compilers support such types, also on processors without instructions for them.
using Lanes = std::uint16_t __attribute__((vector_size(16)));

constexpr int block = 4;

// Four pixels, with eight more bits for each channel.
struct Channels {
  Lanes even;  // blue and red of each
  Lanes odd;   // green and alpha of each
};

Channels load(const std::uint32_t* pixels) {
  Lanes bytes;
  std::memcpy(&bytes, pixels, sizeof bytes);
  return {.even = bytes & 0xFF, .odd = bytes >> 8};
}

void store(const Channels& channels, std::uint32_t* pixels) {
  const Lanes bytes = channels.even | channels.odd << 8;
  std::memcpy(pixels, &bytes, sizeof bytes);
}

// Each channel times that of `factor` / 255, rounded.
Lanes scaled(const Lanes& channels, const Lanes& factor) {
  const Lanes product = channels * factor + 128;
  return (product + (product >> 8)) >> 8;
}

Channels over(const Channels& source, const Channels& below) {
  const Lanes alpha = __builtin_shufflevector(source.odd, source.odd, 1, 1, 3, 3, 5, 5, 7, 7);
  const Lanes rest = 255 - alpha;
  return {.even = source.even + scaled(below.even, rest),
          .odd = source.odd + scaled(below.odd, rest)};
}

// Replaces `count` pixels by the results of change(channels), four at a time.
template <typename Change>
void changeAll(std::uint32_t* pixels, int count, Change change) {
  for (; count >= block; count -= block, pixels += block) store(change(load(pixels)), pixels);
  if (count > 0) {
    const auto size = static_cast<std::size_t>(count) * sizeof(std::uint32_t);
    std::array<std::uint32_t, block> last{};
    std::memcpy(last.data(), pixels, size);
    store(change(load(last.data())), last.data());
    std::memcpy(pixels, last.data(), size);
  }
}

}  // namespace

void fill(std::uint32_t* first, int count, std::uint32_t color) {
  const std::array<std::uint32_t, block> colors = {color, color, color, color};
  for (; count >= block; count -= block, first += block) {
    std::memcpy(first, colors.data(), sizeof colors);
  }
  std::fill_n(first, count, color);
}

void layOver(std::uint32_t* below, int count, std::uint32_t color) {
  const std::array<std::uint32_t, block> colors = {color, color, color, color};
  const Channels source = load(colors.data());
  changeAll(below, count, [&](const Channels& under) { return over(source, under); });
}

void layOver(std::uint32_t* below, int count, const Gradient& colors, std::uint8_t coverage) {
  // The colours of four pixels, with 8 fractional bits.
  const Lanes pixel = {0, 0, 1, 1, 2, 2, 3, 3};
  const auto two = [](std::uint16_t low, std::uint16_t high) {
    return Lanes{low, high, low, high, low, high, low, high};
  };
  const Gradient::Color& first = colors.first;
  const Gradient::Color& step = colors.step;
  const Lanes evenStep = two(step.blue, step.red);
  const Lanes oddStep = two(step.green, step.alpha);
  Lanes even = two(first.blue, first.red) - pixel * evenStep;
  Lanes odd = two(first.green, first.alpha) - pixel * oddStep;
  const Lanes part = Lanes{} + coverage;
  changeAll(below, count, [&](const Channels& under) {
    Channels source{.even = even >> 8, .odd = odd >> 8};
    even -= block * evenStep;
    odd -= block * oddStep;
    if (coverage != 255) {
      source = {.even = scaled(source.even, part), .odd = scaled(source.odd, part)};
    }
    return over(source, under);
  });
}

}  // namespace tessaly::Pixel
