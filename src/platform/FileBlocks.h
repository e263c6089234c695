// Examines files: the space that each takes on its disk, and which of them share all of it.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tessaly {

struct FileBlocks {
  std::uint64_t device = 0;  // an inode number is unique only on its device
  std::uint64_t inode = 0;
  std::uint64_t links = 0;  // the number of the file's names

  std::int64_t blockBytes = 0;  // bytes in the blocks that are counted for the file
  // Bytes on disk by another account of the file system; 0 or less if it gives none.
  std::int64_t allocated = 0;

  // Equal for files that have all their blocks in common, though no two of their names need be of
  // one inode. 0 if no other file shares the blocks, if only a part of them is shared, or if the
  // system does not tell. Content that was written a moment ago may not be on the disk yet: until
  // then a file may have the id of its old content. Not stable from one start of the system to the
  // next.
  std::uint64_t cloneId = 0;

  friend bool operator==(const FileBlocks&, const FileBlocks&) = default;
};

// Examines the items at these absolute paths, in order. Each result is absent if the item cannot be
// examined: it is missing, it is where touching it would mount something, or its file system does
// not answer. Links are examined themselves; only regular files are opened, and none is read.
//
// Takes about 10 microseconds a file. What does not answer for ten seconds is given up, with
// everything else on its mount, and a thread goes on waiting for it. Once `isCancelled` is true,
// which is asked on the caller's thread alone, returns within 50 ms with what is known by then.
using FileBlocksOf = std::function<std::vector<std::optional<FileBlocks>>(
    const std::vector<std::string>& paths, const std::function<bool()>& isCancelled)>;

// Those of this machine. Safe from any thread.
std::vector<std::optional<FileBlocks>> fileBlocks(const std::vector<std::string>& paths,
                                                  const std::function<bool()>& isCancelled);

}  // namespace tessaly
