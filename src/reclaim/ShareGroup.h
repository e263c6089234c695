// Files that share blocks of the disk, an entry of the list of shared blocks. Identified by the id.
// Names and paths are bytes.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tessaly {

// One file, as the disk has it.
struct ShareRecord {
  std::string name = {};
  std::string path = {};
  std::int64_t logical = 0;    // bytes, as the tree has it
  std::int64_t allocated = 0;  // bytes on disk
  std::uint64_t inode = 0;
  std::uint16_t nlink = 0;
  std::uint64_t cloneId = 0;  // 0 if it is no clone, or if that is unknown

  friend bool operator==(const ShareRecord&, const ShareRecord&) = default;
};

struct ShareGroup {
  std::string id = {};    // "clone-" and the clone's number, or "inode-" and the inode
  std::string kind = {};  // "clone" or "hardlink"
  std::vector<ShareRecord> files = {};  // two or more
  std::int64_t logical = 0;             // bytes: the sum of the files
  std::int64_t unique = 0;              // bytes on disk of the largest file

  friend bool operator==(const ShareGroup&, const ShareGroup&) = default;
};

}  // namespace tessaly
