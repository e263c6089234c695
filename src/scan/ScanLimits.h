// Limits by which a scan prunes its tree.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tessaly::scanLimits {

// A file below this many bytes on disk gets no node, unless it is directly in an important folder.
inline constexpr std::int64_t smallFile = 262144;

// The deepest level of the tree; the root has depth 0.
inline constexpr std::uint32_t depth = 12;

// Children that a directory keeps; the others are merged into one node.
inline constexpr std::size_t children = 80;

// Items between two "Mapping" lines.
inline constexpr std::uint64_t progressStride = 1500;

// Last path component of the node for the merged children.
inline constexpr std::string_view remainderComponent = "__rest__";

}  // namespace tessaly::scanLimits
