#include "scan/JsonNumber.h"

#include <charconv>
#include <cmath>

namespace tessaly::JsonNumber {

namespace {

template <typename Number>
void append(std::string& json, Number number) {
  char digits[32];
  const std::to_chars_result result = std::to_chars(digits, digits + sizeof digits, number);
  json.append(digits, result.ptr);
}

}  // namespace

void appendInteger(std::string& json, std::int64_t number) {
  append(json, number);
}

void appendDouble(std::string& json, double number) {
  // Below this bound every whole double is a 64-bit integer, which is written without an exponent.
  constexpr double integersEnd = 9007199254740992.0;
  if (std::fabs(number) < integersEnd && std::trunc(number) == number) {
    append(json, static_cast<std::int64_t>(number));
  } else {
    append(json, number);
  }
}

}  // namespace tessaly::JsonNumber
