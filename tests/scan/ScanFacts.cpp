#include "scan/ScanFacts.h"

#include <stdexcept>

#include "support/SequentialScan.h"

namespace tessaly {
namespace {

std::optional<DiskNode> child(const DiskNode& node, std::string_view name) {
  for (const DiskNode& one : node.children()) {
    if (one.name() == name) return one;
  }
  return std::nullopt;
}

std::optional<DiskNode> found(DiskNode node, std::string_view path) {
  while (true) {
    const auto slash = std::min(path.find('/'), path.size());
    auto next = child(node, path.substr(0, slash));
    if (!next || slash == path.size()) return next;
    node = *next;
    path.remove_prefix(slash + 1);
  }
}

}  // namespace

DiskNode Walker::scan(const std::string& root, const DiskScanner::Callbacks& callbacks,
                      DiskScanner::Options options, const Places& places) const {
  if (threads == 0) return SequentialScan::scan(root, callbacks, options, places);
  options.threads = threads;
  return DiskScanner::scan(root, callbacks, options, places);
}

DiskNode below(const DiskNode& node, std::string_view path) {
  const auto there = found(node, path);
  if (!there) throw std::out_of_range("no node at " + std::string(path));
  return *there;
}

bool has(const DiskNode& node, std::string_view path) {
  return found(node, path).has_value();
}

std::vector<std::string> childNames(const DiskNode& node) {
  std::vector<std::string> names;
  for (const DiskNode& one : node.children()) names.emplace_back(one.name());
  return names;
}

}  // namespace tessaly
