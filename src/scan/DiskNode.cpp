#include "scan/DiskNode.h"

#include <functional>

#include "scan/DiskTree.h"

namespace tessaly {

DiskNode::DiskNode() = default;

DiskNode::DiskNode(std::shared_ptr<const DiskTree> tree, std::uint32_t index)
    : tree_(std::move(tree)), index_(index) {}

DiskNode::DiskNode(const Fields& fields, const std::vector<DiskNode>& children) {
  DiskTreeBuilder builder;
  builder.open({fields.name, fields.size, fields.isDir, fields.kind, fields.mtime}, fields.path);
  for (const DiskNode& child : children) builder.append(child);
  builder.close();
  *this = builder.finish();
}

std::string_view DiskNode::name() const {
  return DiskTree::of(*this).name(DiskTree::indexOf(*this));
}

std::string DiskNode::path() const {
  return DiskTree::of(*this).path(DiskTree::indexOf(*this));
}

std::int64_t DiskNode::size() const {
  return DiskTree::of(*this).entry(DiskTree::indexOf(*this)).size;
}

bool DiskNode::isDir() const {
  return DiskTree::of(*this).entry(DiskTree::indexOf(*this)).isDir();
}

FileKind DiskNode::kind() const {
  return DiskTree::of(*this).entry(DiskTree::indexOf(*this)).kind;
}

std::optional<double> DiskNode::mtime() const {
  const DiskTree::Entry& entry = DiskTree::of(*this).entry(DiskTree::indexOf(*this));
  return entry.hasMtime() ? std::optional(entry.mtime) : std::nullopt;
}

DiskNode::Children DiskNode::children() const {
  const DiskTree::Index index = DiskTree::indexOf(*this);
  const DiskTree::Entry& entry = DiskTree::of(*this).entry(index);
  return {tree_, index + 1, entry.end, entry.childCount};
}

std::size_t DiskNode::subtreeCount() const {
  const DiskTree::Index index = DiskTree::indexOf(*this);
  return DiskTree::of(*this).entry(index).end - index;
}

DiskNode DiskNode::Children::Iterator::operator*() const {
  return {*tree_, index_};
}

DiskNode::Children::Iterator& DiskNode::Children::Iterator::operator++() {
  index_ = (*tree_)->entry(index_).end;
  return *this;
}

DiskNode::Children::Iterator DiskNode::Children::Iterator::operator++(int) {
  const Iterator before = *this;
  ++*this;
  return before;
}

DiskNode DiskNode::Children::front() const {
  return *begin();
}

DiskNode DiskNode::Children::operator[](std::size_t position) const {
  return *std::next(begin(), static_cast<std::ptrdiff_t>(position));
}

bool operator==(const DiskNode& a, const DiskNode& b) {
  const DiskTree& treeA = DiskTree::of(a);
  const DiskTree& treeB = DiskTree::of(b);
  const DiskTree::Index topA = DiskTree::indexOf(a);
  const DiskTree::Index topB = DiskTree::indexOf(b);
  if (&treeA == &treeB && topA == topB) return true;
  const DiskTree::Index count = treeA.entry(topA).end - topA;
  if (treeB.entry(topB).end - topB != count) return false;

  for (DiskTree::Index k = 0; k < count; ++k) {
    const DiskTree::Entry& entryA = treeA.entry(topA + k);
    const DiskTree::Entry& entryB = treeB.entry(topB + k);
    if (entryA.size != entryB.size || entryA.end - topA != entryB.end - topB ||
        entryA.kind != entryB.kind || entryA.isDir() != entryB.isDir() ||
        entryA.hasMtime() != entryB.hasMtime() ||
        (entryA.hasMtime() && entryA.mtime != entryB.mtime) ||
        treeA.name(topA + k) != treeB.name(topB + k)) {
      return false;
    }
    if (k == 0) {
      if (!treeA.pathIs(topA, treeB.path(topB))) return false;
      continue;
    }
    // The parents' paths are already known to be equal and the forms are canonical, so it is enough
    // to compare the parts.
    const bool isAbsoluteA = entryA.pathForm() == DiskTree::PathForm::absolute;
    const bool isAbsoluteB = entryB.pathForm() == DiskTree::PathForm::absolute;
    if (isAbsoluteA != isAbsoluteB || treeA.pathPart(topA + k) != treeB.pathPart(topB + k)) {
      return false;
    }
  }
  return true;
}

}  // namespace tessaly

std::size_t std::hash<tessaly::DiskNode>::operator()(const tessaly::DiskNode& node) const {
  using tessaly::DiskTree;

  std::size_t sum = 0;
  const auto mix = [&sum](std::size_t value) {
    sum ^= value + 0x9e3779b97f4a7c15U + (sum << 6U) + (sum >> 2U);
  };
  const DiskTree& tree = DiskTree::of(node);
  const DiskTree::Index top = DiskTree::indexOf(node);
  const DiskTree::Index end = tree.entry(top).end;
  mix(std::hash<std::string>{}(tree.path(top)));
  for (DiskTree::Index index = top; index < end; ++index) {
    const DiskTree::Entry& entry = tree.entry(index);
    mix(std::hash<std::string_view>{}(tree.name(index)));
    if (index != top) mix(std::hash<std::string_view>{}(tree.pathPart(index)));
    mix(std::hash<std::int64_t>{}(entry.size));
    mix(entry.end - top);
    mix(static_cast<std::size_t>(entry.kind) * 4 + (entry.isDir() ? 2 : 0) +
        (entry.hasMtime() ? 1 : 0));
    if (entry.hasMtime()) mix(std::hash<double>{}(entry.mtime));
  }
  return sum;
}
