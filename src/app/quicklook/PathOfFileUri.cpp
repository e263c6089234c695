#include "app/quicklook/PathOfFileUri.h"

#include <charconv>
#include <cstddef>

namespace tessaly {

std::optional<std::string> pathOfFileUri(std::string_view uri) {
  constexpr std::string_view scheme = "file://";
  if (uri.substr(0, scheme.size()) != scheme) return std::nullopt;
  uri.remove_prefix(scheme.size());
  if (uri.empty() || uri.front() != '/') return std::nullopt;

  std::string path;
  for (std::size_t at = 0; at < uri.size(); ++at) {
    if (uri[at] != '%') {
      path += uri[at];
      continue;
    }
    const std::string_view digits = uri.substr(at + 1, 2);
    unsigned char byte = 0;
    const char* end = digits.data() + digits.size();
    if (digits.size() < 2 || std::from_chars(digits.data(), end, byte, 16).ptr != end || byte == 0)
      return std::nullopt;
    path += static_cast<char>(byte);
    at += digits.size();
  }
  return path;
}

}  // namespace tessaly
