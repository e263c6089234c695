#include "support/TreeLine.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <stdexcept>

namespace tessaly {
namespace {

[[noreturn]] void refuse(const std::string& line) {
  throw std::invalid_argument("no line of a tree: '" + line + "'");
}

std::string unescaped(std::string_view text, const std::string& line) {
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\') {
      bytes += text[i];
      continue;
    }
    if (++i == text.size()) refuse(line);
    switch (text[i]) {
      case 's':
        bytes += ' ';
        break;
      case 'n':
        bytes += '\n';
        break;
      case '\\':
        bytes += '\\';
        break;
      case 'x': {
        unsigned value = 0;
        const auto digits = text.substr(i + 1, 2);
        const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
        if (digits.size() != 2 || read.ptr != digits.data() + 2) refuse(line);
        bytes += static_cast<char>(value);
        i += 2;
        break;
      }
      default:
        refuse(line);
    }
  }
  return bytes;
}

template <typename Number>
std::optional<Number> number(std::string_view text, int base = 10) {
  Number value{};
  const auto read = std::from_chars(text.data(), text.data() + text.size(), value, base);
  if (read.ec != std::errc() || read.ptr != text.data() + text.size()) return std::nullopt;
  return value;
}

std::optional<std::int64_t> byteCount(std::string_view text) {
  std::int64_t unit = 1;
  if (!text.empty()) {
    const char last = text.back();
    if (last == 'K') unit = 1024;
    if (last == 'M') unit = 1024 * 1024;
    if (last == 'G') unit = 1024 * 1024 * 1024;
    if (unit != 1) text.remove_suffix(1);
  }
  const auto count = number<std::int64_t>(text);
  if (!count) return std::nullopt;
  return *count * unit;
}

// "-1.25" becomes -2 s and 750,000,000 ns, as files store it.
timespec timeOf(std::string_view text, const std::string& line) {
  const bool negative = text.starts_with('-');
  if (negative) text.remove_prefix(1);
  const auto dot = text.find('.');
  const auto seconds = number<std::int64_t>(text.substr(0, dot));
  std::string decimals(dot == std::string_view::npos ? std::string_view() : text.substr(dot + 1));
  if (decimals.size() > 9) refuse(line);
  decimals.resize(9, '0');
  const auto nanoseconds = number<long>(decimals);
  if (!seconds || !nanoseconds) refuse(line);
  if (!negative) return {static_cast<time_t>(*seconds), *nanoseconds};
  if (*nanoseconds == 0) return {static_cast<time_t>(-*seconds), 0};
  return {static_cast<time_t>(-*seconds - 1), 1000000000 - *nanoseconds};
}

std::vector<std::string_view> words(std::string_view text) {
  std::vector<std::string_view> found;
  while (true) {
    const auto begin = text.find_first_not_of(' ');
    if (begin == std::string_view::npos) return found;
    const auto end = std::min(text.find(' ', begin), text.size());
    found.push_back(text.substr(begin, end - begin));
    text.remove_prefix(end);
  }
}

void takeWord(TreeLine& line, std::string_view word) {
  const auto value = [&](std::string_view key) -> std::optional<std::string_view> {
    if (!word.starts_with(key)) return std::nullopt;
    return word.substr(key.size());
  };
  if (word == "fifo") {
    line.form = TreeLine::Form::fifo;
  } else if (word == "socket") {
    line.form = TreeLine::Form::socket;
  } else if (const auto length = value("sparse=")) {
    const auto bytes = byteCount(*length);
    if (!bytes) refuse(line.source);
    line.sparseLength = *bytes;
  } else if (const auto mode = value("mode=")) {
    const auto bits = number<unsigned>(*mode, 8);
    if (!bits) refuse(line.source);
    line.mode = *bits;
  } else if (const auto time = value("mtime=")) {
    line.mtime = timeOf(*time, line.source);
  } else if (const auto times = value("x")) {
    const auto count = number<int>(*times);
    if (!count) refuse(line.source);
    line.times = *count;
  } else if (const auto bytes = byteCount(word)) {
    line.allocated = *bytes;
  } else {
    refuse(line.source);
  }
}

TreeLine parsed(std::string_view text, std::size_t margin) {
  TreeLine line;
  line.source = text;
  const auto indent = text.find_first_not_of(' ');
  if (indent < margin || (indent - margin) % 2 != 0) refuse(line.source);
  line.indent = static_cast<int>((indent - margin) / 2);
  const auto all = words(text);
  auto name = all.front();
  line.mode = 0644;
  if (name.ends_with('/')) {
    line.form = TreeLine::Form::folder;
    line.mode = 0755;
    name.remove_suffix(1);
  }
  line.name = unescaped(name, line.source);
  if (line.name.empty() || line.name.find('/') != std::string::npos) refuse(line.source);
  for (std::size_t i = 1; i < all.size(); ++i) {
    if (all[i] == "->" || all[i] == "=") {
      if (i + 1 == all.size()) refuse(line.source);
      line.form = all[i] == "=" ? TreeLine::Form::hardLink : TreeLine::Form::link;
      line.target = unescaped(all[++i], line.source);
    } else {
      takeWord(line, all[i]);
    }
  }
  return line;
}

}  // namespace

std::string TreeLine::nameOf(int ordinal) const {
  if (times == 1) return name;
  std::string digits = std::to_string(ordinal);
  std::string result = name;
  std::for_each(result.rbegin(), result.rend(), [&digits](char& place) {
    if (place != '#') return;
    place = digits.empty() ? '0' : digits.back();
    if (!digits.empty()) digits.pop_back();
  });
  return result;
}

std::vector<TreeLine> parseTreeLines(std::string_view text) {
  std::vector<TreeLine> lines;
  std::optional<std::size_t> margin;
  while (!text.empty()) {
    const auto end = std::min(text.find('\n'), text.size());
    const auto line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    const auto indent = line.find_first_not_of(' ');
    if (indent == std::string_view::npos) continue;
    if (!margin) margin = indent;
    lines.push_back(parsed(line, *margin));
    const bool hasFolder =
        lines.size() > 1 && lines[lines.size() - 2].form == TreeLine::Form::folder;
    const int deepest =
        lines.size() == 1 ? 0 : lines[lines.size() - 2].indent + (hasFolder ? 1 : 0);
    if (lines.back().indent > deepest) refuse(lines.back().source);
  }
  return lines;
}

}  // namespace tessaly
