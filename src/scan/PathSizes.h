#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>

namespace tessaly {

// Sizes in bytes by absolute path: what is remembered of a scan so that the next one can be
// compared with it. Paths are bytes, as everywhere.
using PathSizes = std::unordered_map<std::string, std::int64_t>;

}  // namespace tessaly
