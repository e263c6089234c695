// Finds files of a scanned tree that have the same content, byte for byte: of equal size and of
// equal SHA-256. Chooses and removes nothing.
//
// Hard links to one file, and a file and its clone, are duplicates here. Calls block for as long as
// the files take to read. Safe from any thread.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/FileDigests.h"
#include "platform/FileIdentity.h"
#include "platform/StartThread.h"
#include "reclaim/DuplicateGroup.h"
#include "reclaim/DuplicateProgress.h"
#include "scan/DiskNode.h"
#include "scan/PathSize.h"

namespace tessaly::DuplicateEngine {

// The leaves of the tree of at least `minBytes`, in its order. An application folder is a leaf.
std::vector<PathSize> files(const DiskNode& in, std::int64_t minBytes);

// SHA-256 of the file at `path`: 64 hexadecimal digits in lower case. Absent if it is not a regular
// file, cannot be read or changes while it is read.
std::optional<std::string> hashFile(const std::string& path);

using Hash = std::function<std::optional<std::string>(const std::string& path)>;

// Groups of files() that have equal sizes and equal results of `hash`, which is called for files
// whose size is not the only one of its kind; a file without a result is in no group. The groups
// whose files take the most space together come first; among equal ones in the order in which the
// tree has the first file of their size, and then the first file of the group.
std::vector<DuplicateGroup> groups(const DiskNode& in, std::int64_t minBytes,
                                   const Hash& hash = hashFile);

// How a search reads files (see FileDigests::Options), and what it reports. An empty function is
// never called; all but `read` and `start` are called on the caller's thread.
struct Search {
  std::function<bool()> isCancelled = {};  // asked at least every 20 ms
  // Called when the search begins and ends to read, and at most every 10 ms in between. Not called
  // without a file to read.
  std::function<void(const DuplicateProgress& progress)> progress = {};
  // Called at the end for each file of a group, with what the file was when it was read.
  std::function<void(const std::string& path, const FileIdentity& identity)> compared = {};
  std::function<std::vector<std::string>()> mountPoints = {};
  std::size_t atOnce = FileDigests::Options().atOnce;
  std::chrono::milliseconds patience = FileDigests::Options().patience;
  FileDigests::Read read = FileDigests::Options().read;
  StartThread start = &startThread;
};

// The same groups as groups(), with these differences. Files are compared whose lengths are equal,
// even if they take different space: file systems count the list of a file's pieces with it, so a
// copy in more pieces may take a block more, and one copy may have holes where another has zeros.
// The size of a group is then that of its first file. Several files are read at once, and a file
// that no longer takes as many bytes on disk as in the tree is in no group, nor is one that hangs
// for longer than `patience`. Returns nothing within 50 ms once it is cancelled.
std::vector<DuplicateGroup> find(const DiskNode& in, std::int64_t minBytes, const Search& search);

}  // namespace tessaly::DuplicateEngine
