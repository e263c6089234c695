#include "scan/PackageSize.h"

#include "platform/CheckedArithmetic.h"
#include "platform/ResolvedPath.h"

namespace tessaly::DiskScanner {

std::int64_t packageSize(const std::string& path) {
  DirectoryWalk walk(resolvedPath(path), {});
  std::int64_t size = 0;
  while (const DirectoryWalk::Item* item = walk.next())
    size = checkedAdd(size, sizeInPackage(*item));
  return size;
}

}  // namespace tessaly::DiskScanner
