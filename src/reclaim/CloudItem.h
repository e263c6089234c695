// An entry of the list of items in the cloud without a copy on this disk. Identified by its path.
// Names and paths are bytes.
#pragma once

#include <cstdint>
#include <string>

namespace tessaly {

struct CloudItem {
  std::string name = {};
  std::string path = {};
  std::int64_t size = 0;  // bytes that a copy would take; 0 if unknown

  friend bool operator==(const CloudItem&, const CloudItem&) = default;
};

}  // namespace tessaly
