#include "platform/UnicodeText.h"

#include <algorithm>
#include <utf8proc.h>

namespace tessaly::UnicodeText {

namespace {

constexpr char32_t replacementCharacter = 0xFFFD;

bool isAscii(char byte) {
  return static_cast<unsigned char>(byte) < 0x80;
}

char asciiLowercased(char byte) {
  return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
}

void appendUtf8(std::string& text, char32_t value) {
  utf8proc_uint8_t bytes[4];
  const utf8proc_ssize_t length = utf8proc_encode_char(static_cast<utf8proc_int32_t>(value), bytes);
  text.append(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(length));
}

void appendLowercased(std::string& text, char32_t value) {
  // The only character whose lower-case form has more than one character, in any context.
  constexpr char32_t capitalIWithDot = 0x130;
  constexpr char32_t combiningDot = 0x307;
  if (value == capitalIWithDot) {
    text += 'i';
    appendUtf8(text, combiningDot);
    return;
  }
  appendUtf8(text, static_cast<char32_t>(utf8proc_tolower(static_cast<utf8proc_int32_t>(value))));
}

bool isAccent(utf8proc_int32_t value) {
  // Classes of the Unicode Standard: 1 is an overlay, 10 to 36 are points of Hebrew, Arabic and
  // Syriac, and those from 200 on are named after a place at the letter.
  const int combining = utf8proc_get_property(value)->combining_class;
  return combining == 1 || (combining >= 10 && combining <= 36) || combining >= 200;
}

void appendFolded(std::string& text, char32_t value) {
  constexpr int most = 32;  // one character has at most 18
  utf8proc_int32_t parts[most];
  int lastClass = 0;
  const utf8proc_ssize_t count = utf8proc_decompose_char(
      static_cast<utf8proc_int32_t>(value), parts, most,
      static_cast<utf8proc_option_t>(UTF8PROC_DECOMPOSE | UTF8PROC_CASEFOLD), &lastClass);
  for (utf8proc_ssize_t i = 0; i < std::min<utf8proc_ssize_t>(count, most); ++i) {
    if (!isAccent(parts[i])) appendUtf8(text, static_cast<char32_t>(parts[i]));
  }
}

// Length in bytes of the first grapheme cluster of `text`, which must not be empty.
std::size_t firstGraphemeLength(std::string_view text) {
  // An ASCII character is a cluster of its own before another ASCII character, except in CR LF.
  if (isAscii(text[0]) && text[0] != '\r' && (text.size() == 1 || isAscii(text[1]))) return 1;

  Scalar before = firstScalar(text);
  std::size_t length = before.length;
  utf8proc_int32_t state = 0;
  while (before.isText && length < text.size()) {
    const Scalar next = firstScalar(text.substr(length));
    if (!next.isText ||
        utf8proc_grapheme_break_stateful(static_cast<utf8proc_int32_t>(before.value),
                                         static_cast<utf8proc_int32_t>(next.value), &state)) {
      break;
    }
    length += next.length;
    before = next;
  }
  return length;
}

}  // namespace

Scalar firstScalar(std::string_view text) {
  if (isAscii(text[0])) return {static_cast<char32_t>(text[0]), 1, true};
  utf8proc_int32_t value = 0;
  const utf8proc_ssize_t length = utf8proc_iterate(
      reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
      static_cast<utf8proc_ssize_t>(std::min<std::size_t>(text.size(), 4)), &value);
  if (length < 1 || value < 0) return {replacementCharacter, 1, false};
  return {static_cast<char32_t>(value), static_cast<std::size_t>(length), true};
}

std::string lowercased(std::string_view text) {
  std::string lower;
  lower.reserve(text.size());
  while (!text.empty()) {
    if (isAscii(text[0])) {
      lower += asciiLowercased(text[0]);
      text.remove_prefix(1);
      continue;
    }
    const Scalar scalar = firstScalar(text);
    if (scalar.isText) {
      appendLowercased(lower, scalar.value);
    } else {
      lower += text[0];
    }
    text.remove_prefix(scalar.length);
  }
  return lower;
}

std::string foldedForSearch(std::string_view text) {
  std::string folded;
  folded.reserve(text.size());
  while (!text.empty()) {
    const Scalar scalar = firstScalar(text);
    if (isAscii(text[0])) {
      folded += asciiLowercased(text[0]);
    } else if (scalar.isText) {
      appendFolded(folded, scalar.value);
    } else {
      folded += text[0];
    }
    text.remove_prefix(scalar.length);
  }
  return folded;
}

bool isUtf8(std::string_view text) {
  while (!text.empty()) {
    const Scalar scalar = firstScalar(text);
    if (!scalar.isText) return false;
    text.remove_prefix(scalar.length);
  }
  return true;
}

bool isDirectionControl(char32_t character) {
  return character == 0x061c || character == 0x200e || character == 0x200f ||
         (character >= 0x202a && character <= 0x202e) ||
         (character >= 0x2066 && character <= 0x2069);
}

std::size_t graphemeCount(std::string_view text) {
  std::size_t count = 0;
  for (; !text.empty(); ++count) text.remove_prefix(firstGraphemeLength(text));
  return count;
}

std::string_view firstGraphemes(std::string_view text, std::size_t count) {
  std::size_t length = 0;
  for (; count > 0 && length < text.size(); --count) {
    length += firstGraphemeLength(text.substr(length));
  }
  return text.substr(0, length);
}

std::uint64_t scalarSum(std::string_view text) {
  std::uint64_t sum = 0;
  while (!text.empty()) {
    const Scalar scalar = firstScalar(text);
    sum += scalar.value;
    text.remove_prefix(scalar.length);
  }
  return sum;
}

}  // namespace tessaly::UnicodeText
