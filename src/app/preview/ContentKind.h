// The kind of a file by its first bytes, whatever its name. Pure, safe from any thread.
//
// The signatures come from the specifications of the formats.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tessaly {

struct ContentKind {
  enum class Family : std::uint8_t {
    image,     // in the format `image`
    document,  // PDF
    media,     // sound or film in a container
    closed,    // known, with nothing to show: archives, programs, databases, fonts
    unknown,   // text, or anything else
  };

  // The number of bytes from the beginning of a file that suffice.
  static constexpr std::size_t headBytes = 16 * 1024;

  Family family = Family::unknown;
  // Qt's name of the format, also if it has no reader for it; empty unless the kind is image.
  std::string_view image;

  // `head` is the beginning of the file: all of it, or headBytes.
  static ContentKind of(std::string_view head);

  friend bool operator==(const ContentKind&, const ContentKind&) = default;
};

}  // namespace tessaly
