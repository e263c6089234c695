#include "platform/tools/SearchQuery.h"

#include <charconv>
#include <system_error>

#include "platform/UnicodeText.h"
#include "platform/tools/Printable.h"

namespace tessaly::tools {

namespace {

void skipBlanks(std::string_view& text) {
  while (text.starts_with(' ')) text.remove_prefix(1);
}

bool skip(std::string_view& text, std::string_view word) {
  skipBlanks(text);
  if (!text.starts_with(word)) return false;
  text.remove_prefix(word.size());
  skipBlanks(text);
  return true;
}

ReadQuery misuse() {
  return {.query = {},
          .problem = "usage: mdfind -onlyin FOLDER QUERY, or mdfind -onlyin FOLDER -name TEXT",
          .isMisuse = true};
}

ReadQuery notUnderstood(const std::string& problem) {
  return {.query = {}, .problem = "mdfind: " + problem};
}

}  // namespace

std::optional<std::int64_t> leastSizeIn(std::string_view query) {
  if (!skip(query, "kMDItemFSSize") || !skip(query, ">=")) return std::nullopt;
  while (query.ends_with(' ')) query.remove_suffix(1);
  std::int64_t least = 0;
  const char* const end = query.data() + query.size();
  const auto [stop, error] = std::from_chars(query.data(), end, least);
  if (error != std::errc() || stop != end) return std::nullopt;
  return least;
}

ReadQuery queryFrom(const std::vector<std::string>& args) {
  if (args.size() < 3 || args[0] != "-onlyin" || args[1].empty()) return misuse();
  if (args.size() == 4 && args[2] == "-name") {
    if (!UnicodeText::isUtf8(args[3])) return notUnderstood("the text to find is not UTF-8");
    if (UnicodeText::foldedForSearch(args[3]).empty()) {
      return notUnderstood("the text to find is empty");
    }
    return {.query = SearchQuery{args[1], SearchQuery::ByName{args[3]}}, .problem = {}};
  }
  if (args.size() != 3 || args[2] == "-name") return misuse();
  const std::optional<std::int64_t> least = leastSizeIn(args[2]);
  if (!least) {
    return notUnderstood("this query is not understood: \"" + printable(args[2]) +
                         "\". See tessaly-tools mdfind --help");
  }
  return {.query = SearchQuery{args[1], SearchQuery::BySize{*least}}, .problem = {}};
}

}  // namespace tessaly::tools
