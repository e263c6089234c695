#include "platform/FileUri.h"

namespace tessaly {

namespace {

// The unreserved characters of RFC 3986, and the slash between components. Other characters allowed
// in a path are escaped too, since receivers differ in how they treat them.
bool standsAsItIs(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
         c == '.' || c == '_' || c == '~' || c == '/';
}

}  // namespace

std::string fileUri(std::string_view path) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string uri = "file://";
  for (const char c : path) {
    if (standsAsItIs(c)) {
      uri += c;
      continue;
    }
    const auto byte = static_cast<unsigned char>(c);
    uri += '%';
    uri += digits[byte >> 4];
    uri += digits[byte & 15];
  }
  return uri;
}

}  // namespace tessaly
