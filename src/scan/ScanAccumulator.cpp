#include "scan/ScanAccumulator.h"

#include <algorithm>
#include <cstring>

namespace tessaly {

ScanAccumulator::ScanAccumulator(std::string_view rootName) {
  newNode(rootName, true);
}

ScanAccumulator::Index ScanAccumulator::append(Index parent, std::string_view name, bool isDir) {
  const Index index = newNode(name, isDir);
  Node& above = (*this)[parent];
  (*this)[index].nextSibling = above.firstChild;
  above.firstChild = index;
  ++above.childCount;
  return index;
}

ScanAccumulator::Index ScanAccumulator::newNode(std::string_view name, bool isDir) {
  if (count_ % blockNodes == 0) blocks_.push_back(std::make_unique<Node[]>(blockNodes));
  if (nameBlocks_.empty() || nameRoom_ < name.size()) {
    nameRoom_ = std::max(blockNameBytes, name.size());
    nameBlocks_.push_back(std::make_unique_for_overwrite<char[]>(nameRoom_));
  }
  // A block of names is filled from its end.
  nameRoom_ -= name.size();
  char* const place = nameBlocks_.back().get() + nameRoom_;
  if (!name.empty()) std::memcpy(place, name.data(), name.size());
  nameBytes_ += name.size();

  const auto index = static_cast<Index>(count_++);
  Node& node = (*this)[index];
  node.name = place;
  node.nameLength = static_cast<std::uint16_t>(name.size());
  node.isDir = isDir;
  return index;
}

}  // namespace tessaly
