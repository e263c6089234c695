#include "platform/tools/SnapshotRecords.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <ctime>
#include <simdjson.h>
#include <system_error>

namespace tessaly::tools {

namespace {

constexpr std::string_view blanks = " \t\r\n";

std::string_view trimmed(std::string_view text) {
  const std::size_t start = text.find_first_not_of(blanks);
  if (start == std::string_view::npos) return {};
  return text.substr(start, text.find_last_not_of(blanks) - start + 1);
}

template <class Number>
std::optional<Number> numberIn(std::string_view text) {
  Number number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stop != end) return std::nullopt;
  return number;
}

// What is between the first "<name>" and the "</name>" after it.
std::optional<std::string_view> element(std::string_view xml, std::string_view name) {
  const std::string open = "<" + std::string(name) + ">";
  const std::string close = "</" + std::string(name) + ">";
  const std::size_t start = xml.find(open);
  if (start == std::string_view::npos) return std::nullopt;
  const std::size_t content = start + open.size();
  const std::size_t end = xml.find(close, content);
  if (end == std::string_view::npos) return std::nullopt;
  return xml.substr(content, end - content);
}

// The text of an element, with the five named entities of XML.
std::string textOf(std::string_view xml, std::string_view name) {
  constexpr std::pair<std::string_view, char> entities[] = {
      {"&lt;", '<'}, {"&gt;", '>'}, {"&amp;", '&'}, {"&quot;", '"'}, {"&apos;", '\''}};
  std::string_view rest = trimmed(element(xml, name).value_or(""));
  std::string text;
  while (!rest.empty()) {
    const auto* const entity = std::ranges::find_if(
        entities, [rest](const auto& one) { return rest.starts_with(one.first); });
    if (entity != std::end(entities)) {
      text += entity->second;
      rest.remove_prefix(entity->first.size());
    } else {
      text += rest[0];
      rest.remove_prefix(1);
    }
  }
  return text;
}

// Whether `text` is written like "2024-02-01 13:30:00".
bool isDateAndTime(std::string_view text) {
  constexpr std::string_view form = "dddd-dd-dd dd:dd:dd";
  return std::equal(text.begin(), text.end(), form.begin(), form.end(), [](char is, char wanted) {
    return wanted == 'd' ? is >= '0' && is <= '9' : is == wanted;
  });
}

std::string joined(const std::string& first, const std::string& second) {
  if (first.empty() || second.empty()) return first + second;
  return first + ", " + second;
}

std::string textIn(const simdjson::dom::object& object, std::string_view name) {
  std::string_view text;
  if (object.at_key(name).get(text) != simdjson::SUCCESS) return {};
  return std::string(text);
}

// Calls `use` with the object that is the whole of `json`, if it is one.
template <class Use>
void withObject(std::string_view json, const Use& use) {
  constexpr std::size_t longest = std::size_t{1} << 20U;
  if (json.size() > longest) return;
  simdjson::dom::parser parser;
  simdjson::dom::object object;
  if (parser.parse(simdjson::padded_string(json)).get(object) == simdjson::SUCCESS) use(object);
}

}  // namespace

std::optional<SnapshotRecord> snapperRecord(std::string_view xml, std::uint64_t number) {
  const std::optional<std::string_view> snapshot = element(xml, "snapshot");
  if (!snapshot) return std::nullopt;
  const std::string_view recorded = trimmed(element(*snapshot, "num").value_or(""));
  if (numberIn<std::uint64_t>(recorded) != number) return std::nullopt;
  SnapshotRecord record;
  const std::string date = textOf(*snapshot, "date");
  if (isDateAndTime(date)) record.made = date + " UTC";
  record.purpose = joined(textOf(*snapshot, "cleanup"), textOf(*snapshot, "description"));
  if (record.purpose.empty()) record.purpose = textOf(*snapshot, "type");
  return record;
}

std::optional<SnapshotRecord> timeshiftRecord(std::string_view json) {
  std::optional<SnapshotRecord> record;
  withObject(json, [&record](const simdjson::dom::object& object) {
    const std::string created = textIn(object, "created");
    if (created.empty()) return;
    record.emplace();
    record->made = utcText(numberIn<std::int64_t>(created).value_or(-1));
    record->purpose = joined(std::string(trimmed(textIn(object, "tags"))),
                             std::string(trimmed(textIn(object, "comments"))));
  });
  return record;
}

std::optional<std::string> shellValue(std::string_view text, std::string_view name) {
  std::optional<std::string> value;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = trimmed(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    if (!line.starts_with(name)) continue;
    line.remove_prefix(name.size());
    if (!line.starts_with('=')) continue;
    line.remove_prefix(1);
    const bool isQuoted = line.size() >= 2 && (line[0] == '"' || line[0] == '\'') &&
                          line.find(line[0], 1) != std::string_view::npos;
    value = isQuoted ? line.substr(1, line.find(line[0], 1) - 1)
                     : line.substr(0, line.find_first_of(" \t#"));
  }
  return value;
}

std::optional<std::string> jsonText(std::string_view json, std::string_view name) {
  std::optional<std::string> value;
  withObject(json, [&](const simdjson::dom::object& object) {
    std::string_view text;
    if (object.at_key(name).get(text) == simdjson::SUCCESS) value = text;
  });
  return value;
}

std::string utcText(std::int64_t seconds) {
  constexpr std::int64_t year10000 = 253402300800;
  if (seconds < 0 || seconds >= year10000) return {};
  const auto time = static_cast<std::time_t>(seconds);
  std::tm parts{};
  if (gmtime_r(&time, &parts) == nullptr) return {};
  char text[64];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d UTC", parts.tm_year + 1900,
                parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min, parts.tm_sec);
  return text;
}

}  // namespace tessaly::tools
