#include "scan/Format.h"

#include <array>
#include <charconv>
#include <cstddef>
#include <limits>
#include <string_view>

namespace tessaly::Format {

namespace {

constexpr std::array<std::string_view, 6> units = {"B", "KB", "MB", "GB", "TB", "PB"};

std::string withUnit(double value, std::string_view unit) {
  return fixed(value, 1).append(" ").append(unit);
}

}  // namespace

std::string fixed(double value, int decimals) {
  std::string text(
      static_cast<std::size_t>(std::numeric_limits<double>::max_exponent10 + 4 + decimals), '\0');
  const std::to_chars_result result = std::to_chars(text.data(), text.data() + text.size(), value,
                                                    std::chars_format::fixed, decimals);
  text.resize(static_cast<std::size_t>(result.ptr - text.data()));
  return text;
}

std::string bytes(std::int64_t count) {
  if (count < 1) return "0 B";
  if (count < 1024) return std::to_string(count) + " B";
  double value = static_cast<double>(count) / 1024;
  std::size_t unit = 1;
  while (value >= 1024 && unit + 1 < units.size()) {
    value /= 1024;
    ++unit;
  }
  return withUnit(value, units[unit]);
}

std::string rate(double bytesPerSecond) {
  // Not `<= 0`, so that NaN gives 0.
  double value = bytesPerSecond > 0 ? bytesPerSecond : 0;
  if (value < 1024) return fixed(value, 0) + " B/s";
  value /= 1024;
  if (value < 1024) return withUnit(value, "KB/s");
  value /= 1024;
  if (value < 1024) return withUnit(value, "MB/s");
  return withUnit(value / 1024, "GB/s");
}

std::string counted(std::size_t count, std::string_view noun) {
  std::string text = std::to_string(count);
  text.append(" ").append(noun);
  if (count != 1) text += 's';
  return text;
}

}  // namespace tessaly::Format
