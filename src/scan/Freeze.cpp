#include "scan/Freeze.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "platform/CheckedArithmetic.h"
#include "scan/FileKindRules.h"
#include "scan/ScanLimits.h"

namespace tessaly {

namespace {

class Freezer {
 public:
  Freezer(const ScanAccumulator& accumulator, const NameSet& important, bool expandPackages)
      : accumulator_(accumulator), important_(important), expandPackages_(expandPackages) {
    builder_.reserve(accumulator.count(), accumulator.nameBytes());
  }

  DiskNode freeze(const std::string& rootPath) {
    const Node& root = accumulator_[ScanAccumulator::root];
    const DiskTreeItem item = itemOf(root);
    builder_.open(item, rootPath);
    addChildren(root, item.kind, 0, false);
    builder_.close();
    return builder_.finish();
  }

 private:
  using Index = ScanAccumulator::Index;
  using Node = ScanAccumulator::Node;

  static DiskTreeItem itemOf(const Node& node) {
    return {.name = node.nameView(),
            .size = node.size,
            .isDir = node.isDir,
            .kind = FileKindRules::classify(node.nameView(), node.isDir),
            .mtime = node.mtime > 0 ? std::optional(node.mtime) : std::nullopt};
  }

  // Recurses no deeper than scanLimits::depth.
  void addChildren(const Node& node, FileKind kind, std::uint32_t depth, bool parentIsImportant) {
    if (!node.isDir || depth >= scanLimits::depth) return;
    if (kind == FileKind::app && !expandPackages_) return;
    const bool isImportant = important_.contains(node.nameView());

    const std::size_t begin = scratch_.size();
    for (Index child = node.firstChild; child != ScanAccumulator::none;
         child = accumulator_[child].nextSibling) {
      const Node& at = accumulator_[child];
      if (at.isDir || isImportant || parentIsImportant || at.size >= scanLimits::smallFile) {
        scratch_.push_back(child);
      }
    }
    const std::size_t kept = std::min(scratch_.size() - begin, scanLimits::children);
    const auto first = scratch_.begin() + static_cast<std::ptrdiff_t>(begin);
    std::partial_sort(first, first + static_cast<std::ptrdiff_t>(kept), scratch_.end(),
                      [this](Index a, Index b) { return comesBefore(a, b); });

    std::int64_t remainder = 0;
    for (std::size_t i = begin + kept; i < scratch_.size(); ++i) {
      remainder = checkedAdd(remainder, accumulator_[scratch_[i]].size);
    }
    const std::size_t merged = scratch_.size() - begin - kept;
    scratch_.resize(begin + kept);

    for (std::size_t i = begin; i < begin + kept; ++i) {
      const Node& child = accumulator_[scratch_[i]];
      const DiskTreeItem item = itemOf(child);
      builder_.openBelow(item);
      addChildren(child, item.kind, depth + 1, isImportant);
      builder_.close();
    }
    scratch_.resize(begin);
    if (remainder >= 1) addRemainder(merged, remainder);
  }

  bool comesBefore(Index a, Index b) const {
    const Node& left = accumulator_[a];
    const Node& right = accumulator_[b];
    if (left.size != right.size) return left.size > right.size;
    return left.nameView() < right.nameView();
  }

  void addRemainder(std::size_t merged, std::int64_t size) {
    const std::string name = "+ " + std::to_string(merged) + " more";
    builder_.openBelow({.name = name,
                        .size = size,
                        .isDir = false,
                        .kind = FileKind::other,
                        .mtime = std::nullopt},
                       scanLimits::remainderComponent);
    builder_.close();
  }

  const ScanAccumulator& accumulator_;
  const NameSet& important_;
  const bool expandPackages_;
  DiskTreeBuilder builder_;
  std::vector<Index> scratch_;  // children of all nodes from the root to the current one
};

}  // namespace

DiskNode freeze(const ScanAccumulator& accumulator, const std::string& rootPath,
                const NameSet& important, bool expandPackages) {
  return Freezer(accumulator, important, expandPackages).freeze(rootPath);
}

}  // namespace tessaly
