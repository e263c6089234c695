#include "scan/JsonText.h"

#include <cstddef>

#include "platform/UnicodeText.h"

namespace tessaly::JsonText {

namespace {

// First two UTF-8 bytes of the characters that stand for single bytes.
constexpr std::string_view byteMark = "\xF4\x8F";
constexpr char32_t firstByteCharacter = 0x10FF80;

bool standsAsItIs(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte >= 0x20 && byte < 0x80 && c != '"' && c != '\\';
}

void appendEscapedAscii(std::string& json, char c) {
  constexpr std::string_view digits = "0123456789abcdef";
  const auto byte = static_cast<unsigned char>(c);
  switch (c) {
    case '"':
      json += "\\\"";
      return;
    case '\\':
      json += "\\\\";
      return;
    case '\b':
      json += "\\b";
      return;
    case '\f':
      json += "\\f";
      return;
    case '\n':
      json += "\\n";
      return;
    case '\r':
      json += "\\r";
      return;
    case '\t':
      json += "\\t";
      return;
    default:
      json += "\\u00";
      json += digits[byte >> 4U];
      json += digits[byte & 0xFU];
  }
}

void appendByteCharacter(std::string& json, char c) {
  const auto byte = static_cast<unsigned char>(c);
  json += byteMark;
  json += byte < 0xC0 ? '\xBE' : '\xBF';
  json += static_cast<char>(0x80U | (byte & 0x3FU));
}

}  // namespace

void appendEscaped(std::string& json, std::string_view bytes) {
  while (!bytes.empty()) {
    std::size_t plain = 0;
    while (plain < bytes.size() && standsAsItIs(bytes[plain])) ++plain;
    json += bytes.substr(0, plain);
    bytes.remove_prefix(plain);
    if (bytes.empty()) return;

    const UnicodeText::Scalar scalar = UnicodeText::firstScalar(bytes);
    const std::string_view character = bytes.substr(0, scalar.length);
    bytes.remove_prefix(scalar.length);
    if (!scalar.isText || scalar.value >= firstByteCharacter) {
      for (const char byte : character) appendByteCharacter(json, byte);
    } else if (scalar.value < 0x80) {
      appendEscapedAscii(json, character[0]);
    } else {
      json += character;
    }
  }
}

bool holdsBytes(std::string_view text) {
  return text.find(byteMark) != std::string_view::npos;
}

std::string bytesOf(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  while (true) {
    const std::size_t mark = text.find(byteMark);
    bytes += text.substr(0, mark);
    if (mark == std::string_view::npos) return bytes;
    text.remove_prefix(mark);
    const bool isByte = text.size() >= 4 && (text[2] == '\xBE' || text[2] == '\xBF');
    if (isByte) {
      const unsigned base = text[2] == '\xBE' ? 0x80U : 0xC0U;
      bytes += static_cast<char>(base | (static_cast<unsigned char>(text[3]) & 0x3FU));
    } else {
      bytes += text.substr(0, 4);
    }
    text.remove_prefix(text.size() < 4 ? text.size() : 4);
  }
}

}  // namespace tessaly::JsonText
