#include "platform/linux/DesktopEntry.h"

namespace tessaly::DesktopEntry {

namespace {

constexpr std::string_view blanks = " \t";

std::string_view trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

}  // namespace

Entries entriesOf(std::string_view text) {
  Entries entries;
  bool isOurs = false;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (line.starts_with('[')) {
      isOurs = trimmed(line) == "[Desktop Entry]";
      continue;
    }
    const std::size_t equals = line.find('=');
    if (!isOurs || line.starts_with('#') || equals == std::string_view::npos) continue;
    entries.try_emplace(trimmed(line.substr(0, equals)), trimmed(line.substr(equals + 1)));
  }
  return entries;
}

std::string unescaped(std::string_view text) {
  std::string value;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\' || i + 1 == text.size()) {
      value += text[i];
      continue;
    }
    switch (text[++i]) {
      case 's':
        value += ' ';
        break;
      case 'n':
        value += '\n';
        break;
      case 't':
        value += '\t';
        break;
      case 'r':
        value += '\r';
        break;
      case '\\':
        value += '\\';
        break;
      default:
        value += {'\\', text[i]};
    }
  }
  return value;
}

}  // namespace tessaly::DesktopEntry
