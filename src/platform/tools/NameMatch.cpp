#include "platform/tools/NameMatch.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>

#include "platform/UnicodeText.h"

namespace tessaly::tools {

namespace {

// Eight bytes at a time, since this is asked of every name.
bool isAscii(std::string_view text) {
  constexpr std::uint64_t high = 0x8080808080808080;
  std::size_t at = 0;
  for (; at + 8 <= text.size(); at += 8) {
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, text.data() + at, sizeof bytes);
    if ((bytes & high) != 0) return false;
  }
  return std::all_of(text.begin() + static_cast<std::ptrdiff_t>(at), text.end(),
                     [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

constexpr std::array<char, 128> lowerCase = [] {
  std::array<char, 128> table{};
  for (std::size_t i = 0; i < table.size(); ++i) {
    table[i] = static_cast<char>(i >= 'A' && i <= 'Z' ? i - 'A' + 'a' : i);
  }
  return table;
}();

// Whether the name at `name`, of at least as many bytes, begins with `folded`.
bool beginsWith(const char* name, std::string_view folded) {
  for (std::size_t i = 0; i < folded.size(); ++i) {
    if (lowerCase[static_cast<unsigned char>(name[i])] != folded[i]) return false;
  }
  return true;
}

}  // namespace

NameMatch::NameMatch(std::string_view text)
    : folded_(UnicodeText::foldedForSearch(text)), isAscii_(isAscii(folded_)) {}

NameMatch::Place NameMatch::in(std::string_view name) const {
  if (isAscii(name)) return inAscii(name);
  const std::size_t at = UnicodeText::foldedForSearch(name).find(folded_);
  if (at == std::string::npos) return Place::nowhere;
  return at == 0 ? Place::start : Place::inside;
}

NameMatch::Place NameMatch::inAscii(std::string_view name) const {
  if (!isAscii_ || name.size() < folded_.size()) return Place::nowhere;
  for (std::size_t at = 0; at + folded_.size() <= name.size(); ++at) {
    if (beginsWith(name.data() + at, folded_)) return at == 0 ? Place::start : Place::inside;
  }
  return Place::nowhere;
}

}  // namespace tessaly::tools
