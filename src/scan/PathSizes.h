#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>

namespace tessaly {

// Sizes in bytes by absolute path: the part of a scan that is kept for comparing it with the next
// one. Paths are bytes.
using PathSizes = std::unordered_map<std::string, std::int64_t>;

}  // namespace tessaly
