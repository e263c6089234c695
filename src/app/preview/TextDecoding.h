// Bytes of a file as a text that can be shown, if that is what they are.
//
// A mark at the beginning tells UTF-8, UTF-16 or UTF-32. Without one they are UTF-8 when they are
// well-formed, or nearly so, and else Windows-1252, which has Latin-1 in it, when they look like a
// text at all: no zero, few control characters, not mostly letters beyond ASCII.
//
// What comes out does no harm in a view: every line ends in a line feed and none is over the limit;
// control characters are their pictures (U+2400 and on), and what is no character is U+FFFD.
//
// Pure, safe from any thread.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tessaly::TextDecoding {

struct Limits {
  std::size_t lines = 10'000;
  std::size_t lineLength = 2'000;  // UTF-16 units, at least 2; a longer line goes on in the next
};

struct Text {
  std::u16string units;  // well-formed UTF-16
  bool isWhole = true;   // the bytes were all of the file, and within the limits
};

// `bytes` is the beginning of a file, or all of it where `isWholeFile`. What is left of a character
// that the end cuts is dropped, unless the file ends there too.
std::optional<Text> decoded(std::string_view bytes, bool isWholeFile, const Limits& limits);

}  // namespace tessaly::TextDecoding
