// The engine of the analysis that finds files with the same content.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "session/PostScanAnalysis.h"

namespace tessaly::DuplicateFiles {

// Smaller files are not compared.
inline constexpr std::int64_t leastBytes = 52428800;

// `mountPoints` tells those of the system, which is asked when a file has hung; it may be empty.
PostScanAnalysis::Engine<DuplicateGroup> engine(
    std::function<std::vector<std::string>()> mountPoints = {}, std::int64_t minBytes = leastBytes);

}  // namespace tessaly::DuplicateFiles
