// The part of a filter that the settings store: its switches, under its id. Its name, patterns and
// symbol are always those of the running program.
//
// As JSON: an array of objects with the keys "id", "enabled" and "skipScan", in this order and
// without blanks. Pure, safe from any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

struct SavedFilter {
  std::string id;  // of a BloatFilter
  bool enabled = false;
  bool skipScan = false;

  static std::string encode(const std::vector<SavedFilter>& filters);

  // Decodes what encode() wrote; absent when `json` is anything else. Keys may be in any order, and
  // unknown ones are ignored.
  static std::optional<std::vector<SavedFilter>> decode(std::string_view json);

  friend bool operator==(const SavedFilter&, const SavedFilter&) = default;
};

}  // namespace tessaly
