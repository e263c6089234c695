// Sizes by path as JSON: one object, each key a path, each value a size in bytes. Without blanks,
// in the order of the paths' bytes. Pure, safe from any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "scan/PathSizes.h"

namespace tessaly::PathSizesJson {

std::string encode(const PathSizes& sizes);

// The sizes that were encoded; absent when `json` is anything else, and also when a size is
// negative or all of them add up to more than 64 bits. Of several sizes for one path the last one
// counts.
std::optional<PathSizes> decode(std::string_view json);

}  // namespace tessaly::PathSizesJson
