// An entry of the list of duplicates: files with the same content. Identified by the digest.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "scan/PathSize.h"

namespace tessaly {

struct DuplicateGroup {
  std::string digest = {};           // SHA-256 of the content: 64 hexadecimal digits in lower case
  std::int64_t bytes = 0;            // size of each file
  std::vector<PathSize> files = {};  // at least two, in the order of the tree

  friend bool operator==(const DuplicateGroup&, const DuplicateGroup&) = default;
};

}  // namespace tessaly
