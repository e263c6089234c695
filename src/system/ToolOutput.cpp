#include "system/ToolOutput.h"

#include <charconv>
#include <cmath>
#include <cstddef>
#include <system_error>

#include "platform/UnicodeText.h"

namespace tessaly::ToolOutput {

namespace {

bool isNewline(char32_t value) {
  return (value >= 10 && value <= 13) || value == 133 || value == 8232 || value == 8233;
}

bool isWhiteSpace(char32_t value) {
  return isNewline(value) || value == '\t' || value == ' ' || value == 0xA0 || value == 0x1680 ||
         (value >= 0x2000 && value <= 0x200A) || value == 0x202F || value == 0x205F ||
         value == 0x3000;
}

std::vector<std::string_view> split(std::string_view text, bool (*isSeparator)(char32_t)) {
  std::vector<std::string_view> pieces;
  std::size_t begin = 0;
  std::size_t position = 0;
  const auto endPiece = [&] {
    if (begin < position) pieces.push_back(text.substr(begin, position - begin));
  };
  while (position < text.size()) {
    const UnicodeText::Scalar scalar = UnicodeText::firstScalar(text.substr(position));
    if (isSeparator(scalar.value)) {
      endPiece();
      begin = position + scalar.length;
    }
    position += scalar.length;
  }
  endPiece();
  return pieces;
}

// All of `digits` as a number, without a sign.
template <class Number, class Form>
std::optional<Number> whole(std::string_view digits, Form form) {
  if (digits.starts_with('-')) return std::nullopt;
  Number value{};
  const char* const end = digits.data() + digits.size();
  const std::from_chars_result result = std::from_chars(digits.data(), end, value, form);
  if (result.ec != std::errc() || result.ptr != end) return std::nullopt;
  return value;
}

}  // namespace

std::vector<std::string_view> lines(std::string_view text) {
  return split(text, isNewline);
}

std::vector<std::string_view> words(std::string_view line) {
  return split(line, isWhiteSpace);
}

std::string_view trimmed(std::string_view text) {
  const std::vector<std::string_view> pieces = words(text);
  if (pieces.empty()) return text.substr(0, 0);
  const char* const end = pieces.back().data() + pieces.back().size();
  return {pieces.front().data(), static_cast<std::size_t>(end - pieces.front().data())};
}

std::optional<std::int64_t> integer(std::string_view text) {
  if (text.starts_with('+')) return whole<std::int64_t>(text.substr(1), 10);
  std::int64_t value = 0;
  const std::from_chars_result result =
      std::from_chars(text.data(), text.data() + text.size(), value);
  if (result.ec != std::errc() || result.ptr != text.data() + text.size()) return std::nullopt;
  return value;
}

std::optional<double> number(std::string_view text) {
  const bool isNegative = text.starts_with('-');
  if (isNegative || text.starts_with('+')) text.remove_prefix(1);
  const bool isHexadecimal = text.starts_with("0x") || text.starts_with("0X");
  if (isHexadecimal) text.remove_prefix(2);
  const std::optional<double> value =
      whole<double>(text, isHexadecimal ? std::chars_format::hex : std::chars_format::general);
  if (!value || !std::isfinite(*value)) return std::nullopt;
  return isNegative ? -*value : *value;
}

}  // namespace tessaly::ToolOutput
