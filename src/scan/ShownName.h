// What a person calls an item of a tree.
#pragma once

#include <string>

#include "look/Wording.h"
#include "scan/DiskNode.h"

namespace tessaly {

// The item's name, as bytes, to show. Only the top folder of the disk, which has one name in all
// trees and saved files, has another one.
inline std::string shownName(const DiskNode& node, const Wording& words = Wording::current()) {
  return words.nameOf(node.name(), node.path());
}

}  // namespace tessaly
