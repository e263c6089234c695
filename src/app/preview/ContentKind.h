// What a file holds, by how it begins; its name has no say. Pure, safe from any thread.
//
// The signatures are those that the formats' own descriptions give.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tessaly {

struct ContentKind {
  enum class Family : std::uint8_t {
    image,     // of the format `image`
    document,  // PDF
    media,     // sound or film, in a container of its own
    closed,    // known, and nothing in it to be shown: archives, programs, databases, fonts
    unknown,   // text, or anything else
  };

  // Bytes of a file's beginning that are enough to tell.
  static constexpr std::size_t headBytes = 16 * 1024;

  Family family = Family::unknown;
  // As Qt names the format, also where it has no reader for it; empty for all but images.
  std::string_view image;

  // `head` is the file's beginning: all of it, or headBytes.
  static ContentKind of(std::string_view head);

  friend bool operator==(const ContentKind&, const ContentKind&) = default;
};

}  // namespace tessaly
