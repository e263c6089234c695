#include "platform/linux/links/LinkEntry.h"

#include <algorithm>

#include "platform/FileUri.h"
#include "platform/linux/DesktopEntry.h"

namespace tessaly::LinkEntry {

namespace {

bool isNameCharacter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

char lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool areEqualIgnoringCase(std::string_view a, std::string_view b) {
  return std::ranges::equal(a, b, {}, lower, lower);
}

// Takes the name of a variable off `text`, which begins after a "$"; empty if there is none.
std::string takeName(std::string_view& text) {
  const bool isBraced = text.starts_with('{');
  if (isBraced) text.remove_prefix(1);
  const auto end = std::find_if_not(text.begin(), text.end(), isNameCharacter);
  std::string name(text.begin(), end);
  text.remove_prefix(name.size());
  if (!isBraced) return name;
  if (!text.starts_with('}')) return {};
  text.remove_prefix(1);
  return name;
}

// `text` with the values of its variables; absent if one is not set, or for a command.
std::optional<std::string> expanded(std::string_view text, const Variable& variable) {
  std::string value;
  while (!text.empty()) {
    const std::size_t dollar = std::min(text.find('$'), text.size());
    value += text.substr(0, dollar);
    text.remove_prefix(dollar);
    if (text.empty()) break;
    text.remove_prefix(1);
    if (text.starts_with('$')) {
      value += '$';
      text.remove_prefix(1);
      continue;
    }
    const std::string name = takeName(text);
    const std::optional<std::string> known = name.empty() ? std::nullopt : variable(name);
    if (!known) return std::nullopt;
    value += *known;
  }
  return value;
}

std::optional<std::string> urlIn(std::string_view text, const Variable& variable) {
  const DesktopEntry::Entries entries = DesktopEntry::entriesOf(text);
  const auto value = [&entries](std::string_view key) -> std::optional<std::string> {
    const auto found = entries.find(key);
    if (found == entries.end()) return std::nullopt;
    return DesktopEntry::unescaped(found->second);
  };
  if (value("Type") != "Link") return std::nullopt;
  if (std::optional<std::string> plain = value("URL")) return plain;
  const std::optional<std::string> withVariables = value("URL[$e]");
  return withVariables ? expanded(*withVariables, variable) : std::nullopt;
}

}  // namespace

std::optional<std::string> destinationIn(std::string_view text, std::string_view host,
                                         const Variable& variable) {
  std::optional<std::string> url = urlIn(text, variable);
  if (!url) return std::nullopt;
  if (url->starts_with('/') && url->find('\0') == std::string::npos) return url;
  if (!isFileUri(*url)) return std::nullopt;
  std::optional<FileLocation> location = locationOfFileUri(*url);
  if (!location) return "";
  const bool isHere = location->host.empty() || areEqualIgnoringCase(location->host, "localhost") ||
                      areEqualIgnoringCase(location->host, host);
  if (!isHere) return std::nullopt;
  return std::move(location->path);
}

}  // namespace tessaly::LinkEntry
