#include "app/model/RowNode.h"

#include "scan/FileKindRules.h"
#include "scan/PathName.h"
#include "scan/Remainder.h"
#include "scan/ScanInsights.h"

namespace tessaly::RowNode {

NodeHandle of(const Navigation& navigation, const std::string& path, std::int64_t bytes) {
  if (!navigation.stack().empty()) {
    const auto chain = ScanInsights::chain(navigation.stack().front(), path);
    if (chain && !isRemainder(chain->back())) return NodeHandle(chain->back());
  }
  return NodeHandle(
      DiskNode({.name = std::string(lastPathComponent(path)), .path = path, .size = bytes}));
}

NodeHandle ofFile(const PathSize& file) {
  return NodeHandle(DiskNode({.name = file.name,
                              .path = file.path,
                              .size = file.size,
                              .kind = FileKindRules::classify(file.name, false)}));
}

}  // namespace tessaly::RowNode
