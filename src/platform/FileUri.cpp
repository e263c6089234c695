#include "platform/FileUri.h"

#include <algorithm>

namespace tessaly {

namespace {

// The unreserved characters of RFC 3986, and the slash between components. Other characters allowed
// in a path are escaped too, since receivers differ in how they treat them.
bool standsAsItIs(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
         c == '.' || c == '_' || c == '~' || c == '/';
}

constexpr std::string_view scheme = "file:";

// -1 for another character.
int hexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

std::optional<std::string> decoded(std::string_view text) {
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); ++i) {
    char byte = text[i];
    if (byte == '%') {
      if (text.size() - i < 3) return std::nullopt;
      const int high = hexDigit(text[i + 1]);
      const int low = hexDigit(text[i + 2]);
      if (high < 0 || low < 0) return std::nullopt;
      byte = static_cast<char>(high * 16 + low);
      i += 2;
    }
    if (byte == '\0') return std::nullopt;
    bytes += byte;
  }
  return bytes;
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

bool isFileUri(std::string_view text) {
  const std::string_view start = text.substr(0, scheme.size());
  return std::ranges::equal(start, scheme, {}, [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  });
}

std::optional<FileLocation> locationOfFileUri(std::string_view uri) {
  if (!isFileUri(uri)) return std::nullopt;
  uri.remove_prefix(scheme.size());
  uri = uri.substr(0, uri.find_first_of("?#"));
  FileLocation location;
  if (uri.starts_with("//")) {
    uri.remove_prefix(2);
    location.host = uri.substr(0, uri.find('/'));
    uri.remove_prefix(location.host.size());
  }
  if (!uri.starts_with('/')) return std::nullopt;
  std::optional<std::string> path = decoded(uri);
  if (!path) return std::nullopt;
  location.path = *std::move(path);
  return location;
}

}  // namespace tessaly
