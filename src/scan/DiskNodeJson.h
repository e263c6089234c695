// A tree of nodes as JSON: one object per node, with the keys "name", "path", "size", "isDir",
// "kind", "children" and, if the time is known, "mtime", in this order and without blanks. Names
// and paths are written as JsonText.h describes, so any bytes survive. Pure, safe from any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "scan/DiskNode.h"

namespace tessaly::DiskNodeJson {

// Deepest level below the root that decode() accepts.
inline constexpr int maximumDepth = 64;

std::string encode(const DiskNode& node);

// Decodes what encode() wrote; absent when `json` is anything else. Keys may be in any order, and
// unknown ones are ignored. Also refused are trees that no scan can have written and that would end
// the program later: a negative size, sizes that add up to more than 64 bits, more than
// maximumDepth levels below the root, a name or a path with a NUL byte in it.
std::optional<DiskNode> decode(std::string_view json);

}  // namespace tessaly::DiskNodeJson
