// How far a search for duplicates is.
#pragma once

#include <cstddef>
#include <cstdint>

namespace tessaly {

struct DuplicateProgress {
  std::size_t files = 0;       // that have been read, or could not be
  std::size_t fileCount = 0;   // that are to be read
  std::int64_t bytes = 0;      // of byteCount, of the files so far and the parts of files
  std::int64_t byteCount = 0;  // on disk, of all files that are to be read

  friend bool operator==(const DuplicateProgress&, const DuplicateProgress&) = default;
};

}  // namespace tessaly
