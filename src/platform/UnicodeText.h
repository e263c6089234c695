// Reads bytes as Unicode text, as far as they are valid. File names need not be UTF-8, so nothing
// here fails: a byte that is not part of a well-formed character is one character of its own.
//
// Pure functions independent of the locale, safe from any thread. Character data and the rules of
// grapheme clusters (Unicode Standard Annex 29) come from utf8proc.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tessaly::UnicodeText {

// The first character of a text.
struct Scalar {
  char32_t value = 0;      // U+FFFD for an invalid byte
  std::size_t length = 0;  // bytes read, at least 1
  bool isText = false;
};

// The first scalar value of `text`, which must not be empty.
Scalar firstScalar(std::string_view text);

// Whether all of `text` is well-formed UTF-8.
bool isUtf8(std::string_view text);

// Whether the character is invisible and changes the direction of the text around it:
// "\u202Egpj.exe" looks like "exe.jpg".
bool isDirectionControl(char32_t character);

// Replaces every character by its lower-case form, which may have another length. Invalid bytes are
// kept.
std::string lowercased(std::string_view text);

// `text` for a search that ignores case and accents: two texts that differ only in these have the
// same form, whether their accents are characters of their own or not. Accents are the marks above,
// below and through letters, and the vowel points of Hebrew and Arabic; other marks make a letter
// another one and stay. Invalid bytes are kept.
std::string foldedForSearch(std::string_view text);

// Number of characters that a reader sees. An invalid byte counts as one.
std::size_t graphemeCount(std::string_view text);

// The first `count` characters that a reader sees, or all of `text` if it has fewer. A view into
// `text`.
std::string_view firstGraphemes(std::string_view text, std::size_t count);

// The sum of the scalar values of `text`.
std::uint64_t scalarSum(std::string_view text);

}  // namespace tessaly::UnicodeText
