// How a scan prunes its tree.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tessaly::scanLimits {

// A file below this many bytes on disk gets no node, unless its folder is an important one.
inline constexpr std::int64_t smallFile = 262144;

// The deepest level of the tree; the root has depth 0.
inline constexpr std::uint32_t depth = 12;

// Children kept of a directory; the others are merged into one node.
inline constexpr std::size_t children = 80;

// Items between two "Mapping" lines.
inline constexpr std::uint64_t progressStride = 1500;

// Last path component of the node that stands for the merged ones.
inline constexpr std::string_view remainderComponent = "__rest__";

}  // namespace tessaly::scanLimits
