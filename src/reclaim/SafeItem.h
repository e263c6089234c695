// An entry of the list of files with a score of how safe it is to remove them. Identified by its
// path. Names and paths are bytes.
#pragma once

#include <cstdint>
#include <string>

namespace tessaly {

struct SafeItem {
  std::string name = {};
  std::string path = {};
  std::int64_t bytes = 0;
  int score = 0;            // 0 to 100; 100 is the safest
  std::string label = {};   // the score in words
  bool caution = false;     // the label warns of removing it
  std::string reason = {};  // the parts of the score, joined with " · "

  friend bool operator==(const SafeItem&, const SafeItem&) = default;
};

}  // namespace tessaly
