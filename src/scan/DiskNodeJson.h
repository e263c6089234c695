// A tree of nodes as JSON: one object a node, with the keys "name", "path", "size", "isDir",
// "kind", "children" and, where the time is known, "mtime", in this order and without blanks. Names
// and paths are written as JsonText tells, so that any bytes survive. Pure, safe from any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "scan/DiskNode.h"

namespace tessaly::DiskNodeJson {

// How far below the root a node of a tree that is read may lie.
inline constexpr int maximumDepth = 64;

std::string encode(const DiskNode& node);

// The tree that was encoded; absent when `json` is anything else. Keys may stand in any order, and
// unknown ones are passed over. Also refused is what no scan can have written and what would end
// the program later on: a negative size, sizes that add up to more than 64 bits, more than
// maximumDepth levels below the root, a name or a path with a NUL byte in it.
std::optional<DiskNode> decode(std::string_view json);

}  // namespace tessaly::DiskNodeJson
