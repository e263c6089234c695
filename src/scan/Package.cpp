#include "scan/Package.h"

namespace tessaly {

namespace {

// The suffixes are ASCII, and no other character has an ASCII letter as its only lower-case form,
// so it is enough to lower-case byte by byte.
bool endsWithIgnoringCase(std::string_view name, std::string_view lowerSuffix) {
  if (name.size() < lowerSuffix.size()) return false;
  const std::string_view end = name.substr(name.size() - lowerSuffix.size());
  for (std::size_t i = lowerSuffix.size(); i > 0; --i) {
    const char c = end[i - 1];
    const char lower = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    if (lower != lowerSuffix[i - 1]) return false;
  }
  return true;
}

}  // namespace

bool isAppName(std::string_view name) {
  return endsWithIgnoringCase(name, ".app");
}

bool isPackageName(std::string_view name) {
  return isAppName(name) || endsWithIgnoringCase(name, ".photoslibrary") ||
         endsWithIgnoringCase(name, ".sparsebundle");
}

}  // namespace tessaly
