// Decodes the bytes of a file as text, if they are a text.
//
// A byte-order mark decides for UTF-8, UTF-16 or UTF-32. Bytes without one are UTF-8 if they are
// valid or almost valid, else Windows-1252, which includes Latin-1, if they look like a text: no
// zero byte, few control characters, not mostly non-ASCII letters.
//
// The result is safe to show: every line ends in a line feed and none exceeds the limit; control
// characters are replaced by their pictures (U+2400 and on), and invalid bytes by U+FFFD.
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
  std::size_t lineLength = 2'000;  // UTF-16 units, at least 2; a longer line continues on the next
};

struct Text {
  std::u16string units;  // valid UTF-16
  bool isWhole = true;   // the bytes were the whole file, and within the limits
};

// `bytes` is the beginning of a file, or all of it if `isWholeFile`. An incomplete character at the
// end is dropped, unless the file ends there too.
std::optional<Text> decoded(std::string_view bytes, bool isWholeFile, const Limits& limits);

}  // namespace tessaly::TextDecoding
