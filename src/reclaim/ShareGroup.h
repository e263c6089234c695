// An entry of the list of shared blocks: files that share blocks of the disk. Identified by the id.
// Names and paths are bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace tessaly {

// One of the files.
struct ShareRecord {
  std::string name = {};
  std::string path = {};
  std::int64_t logical = 0;    // bytes, from the tree
  std::int64_t allocated = 0;  // bytes on disk
  // Equal for the names of one file alone: the number of its inode, or one in place of it where
  // files on several devices are compared.
  std::uint64_t inode = 0;
  std::uint16_t nlink = 0;    // number of names; the largest number also stands for more
  std::uint64_t cloneId = 0;  // 0 if it is not a clone or unknown

  friend bool operator==(const ShareRecord&, const ShareRecord&) = default;
};

struct ShareGroup {
  std::string id = {};    // "clone-" and the clone's id, or "inode-" and the inode number
  std::string kind = {};  // "clone" or "hardlink"
  std::vector<ShareRecord> files = {};  // at least two
  std::int64_t logical = 0;             // bytes: the sum over the files
  std::int64_t unique = 0;              // bytes on disk of the largest file

  // Bytes that look like space and cost none: `logical` without `unique`, at least 0. Ends the
  // program after an overflow.
  std::int64_t saving() const;

  friend bool operator==(const ShareGroup&, const ShareGroup&) = default;
};

}  // namespace tessaly

template <>
struct std::hash<tessaly::ShareRecord> {
  std::size_t operator()(const tessaly::ShareRecord& record) const {
    std::size_t sum = std::hash<std::string>{}(record.path);
    for (const std::uint64_t number :
         {static_cast<std::uint64_t>(record.logical), static_cast<std::uint64_t>(record.allocated),
          record.inode, record.cloneId}) {
      sum = sum * 31 + std::hash<std::uint64_t>{}(number);
    }
    return sum;
  }
};

template <>
struct std::hash<tessaly::ShareGroup> {
  std::size_t operator()(const tessaly::ShareGroup& group) const {
    std::size_t sum = std::hash<std::string>{}(group.id);
    for (const tessaly::ShareRecord& record : group.files) {
      sum = sum * 31 + std::hash<tessaly::ShareRecord>{}(record);
    }
    return sum;
  }
};
