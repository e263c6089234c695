#include "scan/KindBreakdown.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "platform/CheckedArithmetic.h"
#include "scan/DiskTree.h"

namespace tessaly::KindBreakdown {

std::vector<KindSlice> slices(const DiskNode& node) {
  std::array<std::int64_t, allFileKinds.size()> totals{};
  const auto add = [&totals](FileKind kind, std::int64_t size) {
    std::int64_t& total = totals[static_cast<std::size_t>(kind)];
    total = checkedAdd(total, size);
  };

  const DiskTree& tree = DiskTree::of(node);
  const DiskTree::Index top = DiskTree::indexOf(node);
  const DiskTree::Index end = tree.entry(top).end;
  for (DiskTree::Index index = top + 1; index < end;) {
    const DiskTree::Entry& entry = tree.entry(index);
    const bool isOpened = entry.isDir() && entry.kind != FileKind::app && entry.childCount > 0;
    if (!isOpened)
      add(entry.isDir() && entry.kind != FileKind::app ? FileKind::folder : entry.kind, entry.size);
    index = isOpened ? index + 1 : entry.end;
  }

  std::int64_t total = 0;
  for (const std::int64_t bytes : totals) total = checkedAdd(total, bytes);
  const auto denominator = static_cast<double>(std::max<std::int64_t>(total, 1));

  std::vector<KindSlice> slices;
  for (const FileKind kind : allFileKinds) {
    const std::int64_t bytes = totals[static_cast<std::size_t>(kind)];
    if (bytes >= 1) slices.push_back({kind, bytes, static_cast<double>(bytes) / denominator});
  }
  std::ranges::stable_sort(slices, std::ranges::greater{}, &KindSlice::bytes);
  return slices;
}

}  // namespace tessaly::KindBreakdown
