#include "session/PostScanAnalysis.h"

namespace tessaly {

std::string PostScanAnalysis::idleScope(const std::string& root, const std::string& homeDirectory) {
  return root.starts_with(homeDirectory) ? homeDirectory : root;
}

}  // namespace tessaly
