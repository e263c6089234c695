#include "scan/Base64.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace tessaly::Base64 {

namespace {

constexpr std::string_view alphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::size_t groupBytes = 3;
constexpr std::size_t groupCharacters = 4;

}  // namespace

std::string encode(std::string_view bytes) {
  std::string text;
  text.reserve((bytes.size() + 2) / groupBytes * groupCharacters);
  for (std::size_t at = 0; at < bytes.size(); at += groupBytes) {
    const std::string_view group = bytes.substr(at, groupBytes);
    std::uint32_t bits = 0;
    for (std::size_t k = 0; k < groupBytes; ++k) {
      bits = bits << 8U | (k < group.size() ? static_cast<unsigned char>(group[k]) : 0U);
    }
    for (std::size_t k = 0; k < groupCharacters; ++k) {
      text += k <= group.size() ? alphabet[bits >> (18U - 6U * k) & 63U] : '=';
    }
  }
  return text;
}

std::optional<std::string> decode(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size() / groupCharacters * groupBytes);
  const std::size_t length = text.find_last_not_of('=') + 1;  // npos + 1 wraps to 0 for a text of
                                                              // padding alone
  for (std::size_t at = 0; at < length; at += groupCharacters) {
    const std::string_view group = text.substr(at, groupCharacters).substr(0, length - at);
    std::uint32_t bits = 0;
    for (std::size_t k = 0; k < groupCharacters; ++k) {
      const std::size_t value = k < group.size() ? alphabet.find(group[k]) : 0;
      if (value == std::string_view::npos) return std::nullopt;
      bits = bits << 6U | static_cast<std::uint32_t>(value);
    }
    for (std::size_t k = 0; k + 1 < group.size(); ++k) {
      bytes += static_cast<char>(bits >> (16U - 8U * k) & 255U);
    }
  }
  // Encoding again finds wrong padding and unused bits that are not 0.
  if (encode(bytes) != text) return std::nullopt;
  return bytes;
}

}  // namespace tessaly::Base64
