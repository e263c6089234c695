// Sizes by path as JSON: one object, each key a path, each value a size in bytes. Without blanks,
// sorted by the bytes of the paths. Pure, safe from any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "scan/PathSizes.h"

namespace tessaly::PathSizesJson {

std::string encode(const PathSizes& sizes);

// Decodes what encode() wrote; absent when `json` is anything else, when a size is negative, and
// when all sizes add up to more than 64 bits. Of several sizes for one path the last one counts.
std::optional<PathSizes> decode(std::string_view json);

}  // namespace tessaly::PathSizesJson
