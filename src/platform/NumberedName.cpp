#include "platform/NumberedName.h"

#include <cstddef>

#include "platform/UnicodeText.h"

namespace tessaly {

namespace {

constexpr std::size_t mostBytes = 255;  // longest name on common file systems

// The longest prefix of whole characters within `limit` bytes.
std::string_view fitting(std::string_view text, std::size_t limit) {
  std::size_t length = 0;
  while (length < text.size()) {
    const std::size_t next = UnicodeText::firstScalar(text.substr(length)).length;
    if (length + next > limit) break;
    length += next;
  }
  return text.substr(0, length);
}

}  // namespace

std::string numberedName(std::string_view name, int number) {
  if (number == 1) return std::string(name);
  const std::size_t dot = name.rfind('.');
  const bool hasEnding = dot != std::string_view::npos && dot > 0;
  std::string_view ending = hasEnding ? name.substr(dot) : std::string_view();
  const std::string_view stem = name.substr(0, name.size() - ending.size());
  const std::string suffix = " " + std::to_string(number);
  if (ending.size() + suffix.size() > mostBytes) ending = {};
  return std::string(fitting(stem, mostBytes - ending.size() - suffix.size())) + suffix +
         std::string(ending);
}

}  // namespace tessaly
