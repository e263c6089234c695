#include "app/desktop/SuggestedName.h"

#include <cstddef>

#include "platform/UnicodeText.h"

namespace tessaly {

namespace {

constexpr std::size_t mostBytes = 255;  // in a name, on the usual file systems

std::string editable(std::string_view name) {
  std::string result;
  while (!name.empty()) {
    const auto scalar = UnicodeText::firstScalar(name);
    const bool isControl = scalar.value < 0x20 || (scalar.value >= 0x7f && scalar.value < 0xa0) ||
                           scalar.value == 0x2028 || scalar.value == 0x2029 ||
                           UnicodeText::isDirectionControl(scalar.value);
    if (!scalar.isText) {
      result += "\xef\xbf\xbd";
    } else if (isControl || scalar.value == '/' || (scalar.value == '~' && result.empty())) {
      result += '-';
    } else if (scalar.value == '"') {
      result += '\'';
    } else {
      result += name.substr(0, scalar.length);
    }
    name.remove_prefix(scalar.length);
  }
  return result;
}

// The longest prefix of whole characters within `limit` bytes.
std::string_view fitting(std::string_view text, std::size_t limit) {
  std::size_t length = 0;
  while (length < text.size()) {
    const std::size_t next = UnicodeText::firstGraphemes(text.substr(length), 1).size();
    if (length + next > limit) break;
    length += next;
  }
  return text.substr(0, length);
}

}  // namespace

std::string suggestedName(std::string_view fileName, std::string_view extension) {
  const std::string ending = "." + std::string(extension);
  if (fileName.ends_with(ending)) fileName.remove_suffix(ending.size());
  const std::string stem = editable(fileName);
  return std::string(fitting(stem, mostBytes - ending.size())) + ending;
}

}  // namespace tessaly
