#include "scan/Remainder.h"

#include "scan/PathName.h"
#include "scan/ScanLimits.h"

namespace tessaly {

bool isRemainder(const DiskNode& node) {
  return node.name() != scanLimits::remainderComponent &&
         lastPathComponent(node.path()) == scanLimits::remainderComponent;
}

}  // namespace tessaly
