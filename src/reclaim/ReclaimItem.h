// A known location in the home, as measured. Identified by its id. Paths are bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

namespace tessaly {

struct ReclaimItem {
  std::string id = {};
  std::string label = {};
  std::string relativePath = {};  // below the home
  std::string note = {};          // what becomes of its contents, for the user
  bool caution = false;           // whether removing it loses something
  std::string path = {};          // absolute
  std::int64_t bytes = 0;         // on disk

  friend bool operator==(const ReclaimItem&, const ReclaimItem&) = default;
};

}  // namespace tessaly

template <>
struct std::hash<tessaly::ReclaimItem> {
  std::size_t operator()(const tessaly::ReclaimItem& item) const {
    const std::hash<std::string> textHash;
    return (textHash(item.id) * 31 + textHash(item.path)) * 31 +
           std::hash<std::int64_t>{}(item.bytes);
  }
};
