#include "app/map/Pixel.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>

namespace tessaly::Pixel {
namespace {

// So many at a time that the compiler turns the loops over their bytes into vector instructions.
constexpr int blockPixels = 16;
constexpr std::size_t blockBytes = blockPixels * sizeof(std::uint32_t);

using Bytes = std::array<std::uint8_t, blockBytes>;

void layBlockOver(std::uint32_t* below, const std::uint32_t* sources) {
  std::array<std::uint32_t, blockPixels> restOfPixel;
  for (std::size_t i = 0; i < blockPixels; ++i) {
    restOfPixel[i] = (255 - (sources[i] >> 24)) * 0x01010101u;
  }
  Bytes under, over, rest;
  std::memcpy(under.data(), below, blockBytes);
  std::memcpy(over.data(), sources, blockBytes);
  std::memcpy(rest.data(), restOfPixel.data(), blockBytes);
  for (std::size_t i = 0; i < blockBytes; ++i) {
    const auto product = static_cast<std::uint16_t>(under[i] * rest[i] + 128);
    const auto sum = static_cast<std::uint16_t>(product + (product >> 8));
    under[i] = static_cast<std::uint8_t>(over[i] + (sum >> 8));
  }
  std::memcpy(below, under.data(), blockBytes);
}

}  // namespace

void layOver(std::uint32_t* below, const std::uint32_t* sources, int count) {
  int done = 0;
  for (; count - done >= blockPixels; done += blockPixels) {
    layBlockOver(below + done, sources + done);
  }
  for (; done < count; ++done) below[done] = over(sources[done], below[done]);
}

}  // namespace tessaly::Pixel
