#include "session/PostScanAnalysis.h"

namespace tessaly::PostScanAnalysis {

Lists run(const Engines& engines, const FinishedScan& scan, const IsCancelled& isCancelled) {
  const auto listOf = [&]<class Row>(const Engine<Row>& engine) {
    return engine && !isCancelled() ? engine(scan, isCancelled) : std::vector<Row>();
  };
  // The elements of a braced list are evaluated in their order.
  return {.duplicates = listOf(engines.duplicates),
          .deadLinks = listOf(engines.deadLinks),
          .cloudItems = listOf(engines.cloudItems),
          .cloneGroups = listOf(engines.cloneGroups),
          .safeItems = listOf(engines.safeItems)};
}

std::string idleScope(const std::string& root, const std::string& homeDirectory) {
  return root.starts_with(homeDirectory) ? homeDirectory : root;
}

}  // namespace tessaly::PostScanAnalysis
