// The places of an operating system that the program treats specially. Plain values: both systems'
// lists are compiled, and can be tested, on both. current() is the one in force.
#pragma once

#include <string>
#include <unordered_set>
#include <vector>

namespace tessaly {

struct Places {
  std::unordered_set<std::string> skipNames;         // names no walk enters, at any depth
  std::unordered_set<std::string> skipRootNames;     // names left out directly under "/"
  std::vector<std::string> skipPaths;                // absolute paths no walk enters
  std::unordered_set<std::string> importantFolders;  // folders whose small files keep a node

  static const Places& forMacos();
  static const Places& forLinux();
  static const Places& current();
};

}  // namespace tessaly
