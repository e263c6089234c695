#include "platform/linux/trash/TrashInfo.h"

#include <array>
#include <cstdio>

namespace tessaly::TrashInfo {

namespace {

bool isPlain(char byte) {
  return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z') ||
         (byte >= '0' && byte <= '9') || std::string_view("-._~/").find(byte) != std::string::npos;
}

std::string percentEncoded(std::string_view bytes) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string encoded;
  encoded.reserve(bytes.size());
  for (const char byte : bytes) {
    if (isPlain(byte)) {
      encoded += byte;
    } else {
      const auto value = static_cast<unsigned char>(byte);
      encoded += {'%', digits[value >> 4U], digits[value & 15U]};
    }
  }
  return encoded;
}

bool continues(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

// Length in bytes of the UTF-8 character with this first byte; 1 for an invalid byte.
std::size_t lengthBy(char first) {
  const auto value = static_cast<unsigned char>(first);
  if (value >= 0xC2 && value <= 0xDF) return 2;
  if (value >= 0xE0 && value <= 0xEF) return 3;
  return value >= 0xF0 && value <= 0xF4 ? 4 : 1;
}

// At most `most` bytes, fewer if a character would be split.
std::string_view cut(std::string_view text, std::size_t most) {
  if (text.size() <= most) return text;
  std::size_t start = most;
  while (start > 0 && most - start < 3 && continues(text[start])) --start;
  const std::size_t length = lengthBy(text[start]);
  bool isCharacter = length > 1 && start + length <= text.size() && start + length > most;
  for (std::size_t i = start + 1; isCharacter && i < start + length; ++i) {
    isCharacter = continues(text[i]);
  }
  return text.substr(0, isCharacter ? start : most);
}

}  // namespace

std::string text(std::string_view path, const std::tm& deleted) {
  std::array<char, 80> date{};
  std::snprintf(date.data(), date.size(), "%04d-%02d-%02dT%02d:%02d:%02d", deleted.tm_year + 1900,
                deleted.tm_mon + 1, deleted.tm_mday, deleted.tm_hour, deleted.tm_min,
                deleted.tm_sec);
  return "[Trash Info]\nPath=" + percentEncoded(path) + "\nDeletionDate=" + date.data() + "\n";
}

std::string nameFor(std::string_view name, unsigned number, std::size_t longest) {
  constexpr std::size_t longestExtension = 16;  // longer ones count as part of the name
  std::string behind;
  if (const std::size_t dot = name.rfind('.');
      dot != std::string_view::npos && dot > 0 && name.size() - dot <= longestExtension) {
    behind = name.substr(dot);
    name.remove_suffix(behind.size());
  }
  if (number > 1) behind.insert(0, "." + std::to_string(number));
  const std::size_t taken = behind.size() + ending.size();
  // No common file system has such short names.
  if (longest <= taken) return std::string(name) + behind;
  return std::string(cut(name, longest - taken)) + behind;
}

}  // namespace tessaly::TrashInfo
