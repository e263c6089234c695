// A named group of patterns for items that tend to fill a disk: artefacts of developers' tools and
// heavy media. An enabled filter highlights the tiles that match; it can also exclude matching
// items from the next scan.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <unordered_set>
#include <vector>

namespace tessaly {

struct BloatFilter {
  // Names and suffixes that a scan leaves out.
  struct ScanExcludes {
    std::unordered_set<std::string> names;     // exact names, case kept
    std::unordered_set<std::string> suffixes;  // lower case, with the leading dot
  };

  std::string id;                     // key under which the settings store it
  std::string name;                   // label
  std::vector<std::string> patterns;  // substrings of names and paths, in any case
  std::string symbol;                 // name of the symbol beside the label
  bool enabled = false;               // highlight the tiles that match
  bool skipScan = false;              // leave matching items out of the next scan

  // The twelve filters of the program in the order of the sidebar, all switched off.
  static const std::vector<BloatFilter>& catalog();

  // What a scan leaves out for the filters with skipScan; `enabled` does not matter. The form of a
  // pattern alone decides: ".mp4" is a suffix, and so is ".cache", but the longer ".vmwarevm" and
  // every pattern that does not start with its only dot are names.
  static ScanExcludes scanExcludes(const std::vector<BloatFilter>& filters);

  friend bool operator==(const BloatFilter&, const BloatFilter&) = default;
};

}  // namespace tessaly

template <>
struct std::hash<tessaly::BloatFilter> {
  std::size_t operator()(const tessaly::BloatFilter& filter) const;
};
