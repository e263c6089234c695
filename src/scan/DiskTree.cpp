#include "scan/DiskTree.h"

#include <cstring>

namespace tessaly {

const DiskTree& DiskTree::of(const DiskNode& node) {
  // Never destroyed, so that static DiskNodes may outlive it.
  static const DiskTree* const empty = [] {
    auto* tree = new DiskTree;
    Entry entry;
    entry.end = 1;
    entry.setPathForm(PathForm::absolute);
    tree->entries_.push_back(entry);
    tree->texts_.append(sizeof(std::uint32_t), '\0');
    return tree;
  }();
  return node.tree_ ? *node.tree_ : *empty;
}

std::string_view DiskTree::pathPart(Index index) const {
  const Entry& entry = entries_[index];
  if (entry.pathForm() == PathForm::name) return name(index);
  const char* behindName = texts_.data() + entry.textOffset + entry.nameLength;
  std::uint32_t length = 0;
  std::memcpy(&length, behindName, sizeof length);
  return {behindName + sizeof length, length};
}

bool DiskTree::endsInSlash(Index index) const {
  const std::string_view part = pathPart(index);
  if (!part.empty()) return part.back() == '/';
  return entries_[index].pathForm() != PathForm::absolute;
}

std::size_t DiskTree::pathLength(Index index) const {
  std::size_t length = 0;
  while (entries_[index].pathForm() != PathForm::absolute) {
    length += pathPart(index).size();
    index = entries_[index].parent;
    if (!endsInSlash(index)) ++length;
  }
  return length + pathPart(index).size();
}

std::string DiskTree::path(Index index) const {
  // Filled from the end, since a node knows its parent but not its children on the way down.
  std::string path(pathLength(index), '/');
  std::size_t position = path.size();
  while (true) {
    const std::string_view part = pathPart(index);
    position -= part.size();
    part.copy(path.data() + position, part.size());
    if (entries_[index].pathForm() == PathForm::absolute) return path;
    index = entries_[index].parent;
    if (!endsInSlash(index)) --position;
  }
}

bool DiskTree::pathIs(Index index, std::string_view path) const {
  while (entries_[index].pathForm() != PathForm::absolute) {
    const std::string_view part = pathPart(index);
    if (!path.ends_with(part)) return false;
    path.remove_suffix(part.size());
    index = entries_[index].parent;
    if (endsInSlash(index)) continue;
    if (!path.ends_with('/')) return false;
    path.remove_suffix(1);
  }
  return path == pathPart(index);
}

}  // namespace tessaly
