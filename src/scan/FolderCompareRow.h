// One line of a comparison of two folders, identified by its relative path, which is bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

namespace tessaly {

struct FolderCompareRow {
  std::string relative;    // path below the compared folders; "." for the folders themselves
  std::int64_t left = 0;   // bytes in the left folder; 0 if the item is not there
  std::int64_t right = 0;  // bytes in the right folder; 0 if the item is not there

  friend bool operator==(const FolderCompareRow&, const FolderCompareRow&) = default;
};

}  // namespace tessaly

template <>
struct std::hash<tessaly::FolderCompareRow> {
  std::size_t operator()(const tessaly::FolderCompareRow& row) const {
    const std::hash<std::int64_t> sizeHash;
    return (std::hash<std::string>{}(row.relative) * 31 + sizeHash(row.left)) * 31 +
           sizeHash(row.right);
  }
};
