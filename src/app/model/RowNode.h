// The node of a row that is known only by its path.
#pragma once

#include <cstdint>
#include <string>

#include "app/model/NodeHandle.h"
#include "scan/PathSize.h"
#include "session/Navigation.h"

namespace tessaly::RowNode {

// The node at `path` in the tree on screen. A tree leaves out small items; if it has none there, a
// file with this path and size.
NodeHandle of(const Navigation& navigation, const std::string& path, std::int64_t bytes);

// A file with this name, path and size, and the kind that its name gives.
NodeHandle ofFile(const PathSize& file);

}  // namespace tessaly::RowNode
