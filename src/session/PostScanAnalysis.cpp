#include "session/PostScanAnalysis.h"

#include <utility>

namespace tessaly::PostScanAnalysis {

Lists run(const Engines& engines, FinishedScan scan, const IsCancelled& isCancelled) {
  std::unordered_map<std::string, FileIdentity> copies;
  scan.duplicates.compared = [&copies](const std::string& path, const FileIdentity& identity) {
    copies.insert_or_assign(path, identity);
  };
  const auto listOf = [&]<class Row>(const Engine<Row>& engine) {
    return engine && !isCancelled() ? engine(scan, isCancelled) : std::vector<Row>();
  };
  // The elements of a braced list are evaluated in their order.
  return {.duplicates = listOf(engines.duplicates),
          .deadLinks = listOf(engines.deadLinks),
          .cloudItems = listOf(engines.cloudItems),
          .cloneGroups = listOf(engines.cloneGroups),
          .safeItems = listOf(engines.safeItems),
          .copies = std::move(copies)};
}

std::string idleScope(const std::string& root, const std::string& homeDirectory) {
  return root.starts_with(homeDirectory) ? homeDirectory : root;
}

}  // namespace tessaly::PostScanAnalysis
