// An item that is in the cloud but not on this disk, an entry of the list of such items. Identified
// by its path. Names and paths are bytes.
#pragma once

#include <cstdint>
#include <string>

namespace tessaly {

struct CloudItem {
  std::string name = {};
  std::string path = {};
  std::int64_t size = 0;  // bytes that it would take up here; 0 if unknown

  friend bool operator==(const CloudItem&, const CloudItem&) = default;
};

}  // namespace tessaly
