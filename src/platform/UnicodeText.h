// Reading bytes as Unicode text, as far as they are text. File names need not be UTF-8, so nothing
// here fails: a byte that belongs to no well-formed character stands for itself.
//
// Pure functions without locale, safe from any thread. Character data and the rules of grapheme
// clusters (Unicode Standard Annex 29) come from utf8proc.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tessaly::UnicodeText {

// What stands at the beginning of a text.
struct Scalar {
  char32_t value = 0;      // U+FFFD for a byte that is no text
  std::size_t length = 0;  // bytes taken, at least 1
  bool isText = false;
};

// The first scalar value of `text`, which must not be empty.
Scalar firstScalar(std::string_view text);

// Whether the character changes the direction in which the text around it is shown, and shows
// nothing itself: "\u202Egpj.exe" looks like "exe.jpg".
bool isDirectionControl(char32_t character);

// Every character replaced by its lower-case form, which may be of another length. Bytes that are
// no text stay as they are.
std::string lowercased(std::string_view text);

// How many characters a reader sees. A byte that is no text counts as one.
std::size_t graphemeCount(std::string_view text);

// The first `count` characters that a reader sees, or all of `text` if it has no more. A view into
// `text`.
std::string_view firstGraphemes(std::string_view text, std::size_t count);

// The scalar values of `text` added up.
std::uint64_t scalarSum(std::string_view text);

}  // namespace tessaly::UnicodeText
