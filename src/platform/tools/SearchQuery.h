// What a search is asked for: the arguments of mdfind as a value.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tessaly::tools {

struct SearchQuery {
  // Regular files of at least this length in bytes.
  struct BySize {
    std::int64_t least = 0;

    friend bool operator==(const BySize&, const BySize&) = default;
  };
  // Items whose name contains this text.
  struct ByName {
    std::string text;

    friend bool operator==(const ByName&, const ByName&) = default;
  };

  std::string scope;  // the folder, as given
  std::variant<BySize, ByName> wanted;

  friend bool operator==(const SearchQuery&, const SearchQuery&) = default;
};

// The query of "-onlyin SCOPE QUERY" or "-onlyin SCOPE -name TEXT"; else `problem` is a line
// without a line feed that says what is wrong.
struct ReadQuery {
  std::optional<SearchQuery> query;
  std::string problem;
  bool isMisuse =
      false;  // the arguments have another form; otherwise one of them is not understood
};
ReadQuery queryFrom(const std::vector<std::string>& args);

// The number N of "kMDItemFSSize >= N", in decimal and at most 64 bits with a sign.
std::optional<std::int64_t> leastSizeIn(std::string_view query);

}  // namespace tessaly::tools
