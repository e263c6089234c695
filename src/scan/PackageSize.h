// The size of a package as a whole.
#pragma once

#include <cstdint>
#include <string>

#include "platform/DirectoryWalk.h"

namespace tessaly::DiskScanner {

// Bytes on disk of all that lies in the directory at `path`; 0 if it cannot be read. Links and the
// directories themselves add nothing, and nothing is left out.
std::int64_t packageSize(const std::string& path);

// What one item inside a package adds to its size.
inline std::int64_t sizeInPackage(const DirectoryWalk::Item& item) {
  const bool adds = item.type != DirectoryWalk::Type::directory &&
                    item.type != DirectoryWalk::Type::link && item.hasAttributes;
  return adds ? item.allocatedSize : 0;
}

}  // namespace tessaly::DiskScanner
