#include "reclaim/LockLink.h"

#include <algorithm>

namespace tessaly {

namespace {

constexpr std::string_view singleton = "Singleton";

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

bool isNumber(std::string_view text) {
  return !text.empty() && std::ranges::all_of(text, isDigit);
}

// Whether the text is something, the character `separator` for the last time, and a number.
bool endsInNumberAfter(std::string_view text, char separator) {
  const std::size_t at = text.rfind(separator);
  return at != std::string_view::npos && at > 0 && isNumber(text.substr(at + 1));
}

bool isOfChromium(std::string_view text) {
  if (text.starts_with('/')) return text.substr(text.rfind('/') + 1).starts_with(singleton);
  return isNumber(text) || endsInNumberAfter(text, '-');
}

bool isOfFirefox(std::string_view text) {
  const std::size_t colon = text.rfind(':');
  if (colon == std::string_view::npos || colon == 0) return false;
  const std::string_view address = text.substr(0, colon);
  std::string_view process = text.substr(colon + 1);
  if (process.starts_with('+')) process.remove_prefix(1);
  return isNumber(process) &&
         address.find_first_not_of("0123456789abcdefABCDEF.:") == std::string_view::npos;
}

bool isOfEmacs(std::string_view text) {
  const std::size_t at = text.rfind('@');
  if (at == std::string_view::npos || at == 0) return false;
  std::string_view host = text.substr(at + 1);
  const std::size_t colon = host.find(':');
  if (colon != std::string_view::npos) {
    if (!isNumber(host.substr(colon + 1))) return false;
    host = host.substr(0, colon);
  }
  return endsInNumberAfter(host, '.');
}

}  // namespace

bool isLockLink(std::string_view name, std::string_view text) {
  if (name.starts_with(singleton)) return isOfChromium(text);
  if (name == "lock") return isOfFirefox(text);
  return name.size() > 2 && name.starts_with(".#") && isOfEmacs(text);
}

}  // namespace tessaly
