// An entry of the list of shared blocks: files that share blocks of the disk. Identified by the id.
// Names and paths are bytes.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tessaly {

// One of the files.
struct ShareRecord {
  std::string name = {};
  std::string path = {};
  std::int64_t logical = 0;    // bytes, from the tree
  std::int64_t allocated = 0;  // bytes on disk
  std::uint64_t inode = 0;
  std::uint16_t nlink = 0;
  std::uint64_t cloneId = 0;  // 0 if it is not a clone or unknown

  friend bool operator==(const ShareRecord&, const ShareRecord&) = default;
};

struct ShareGroup {
  std::string id = {};    // "clone-" and the clone's id, or "inode-" and the inode number
  std::string kind = {};  // "clone" or "hardlink"
  std::vector<ShareRecord> files = {};  // at least two
  std::int64_t logical = 0;             // bytes: the sum over the files
  std::int64_t unique = 0;              // bytes on disk of the largest file

  friend bool operator==(const ShareGroup&, const ShareGroup&) = default;
};

}  // namespace tessaly
