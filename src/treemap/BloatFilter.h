// A named group of patterns for what tends to fill a disk: artefacts of developers' tools and heavy
// media. Switched on, it highlights the tiles that match; it can also keep matching items out of
// the next scan.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <unordered_set>
#include <vector>

namespace tessaly {

struct BloatFilter {
  // The names and endings that a scan leaves out.
  struct ScanExcludes {
    std::unordered_set<std::string> names;     // exact names, case kept
    std::unordered_set<std::string> suffixes;  // lower case, with their dot
  };

  std::string id;                     // key under which settings keep it
  std::string name;                   // label
  std::vector<std::string> patterns;  // parts of names and paths, in any case
  std::string symbol;                 // name of the symbol beside the label
  bool enabled = false;               // highlight the tiles that match
  bool skipScan = false;              // leave out of the next scan what matches

  // The twelve filters of the program in the order of the sidebar, all switched off.
  static const std::vector<BloatFilter>& catalog();

  // What the filters with skipScan leave out of a scan; `enabled` does not matter. A pattern is
  // sorted by its form alone: ".mp4" is an ending, and so is ".cache", but the longer ".vmwarevm"
  // and all that does not start with its only dot are names.
  static ScanExcludes scanExcludes(const std::vector<BloatFilter>& filters);

  friend bool operator==(const BloatFilter&, const BloatFilter&) = default;
};

}  // namespace tessaly

template <>
struct std::hash<tessaly::BloatFilter> {
  std::size_t operator()(const tessaly::BloatFilter& filter) const;
};
