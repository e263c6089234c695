// What the analysis of the scanned home folder finds.
#pragma once

#include <cstddef>

#include "session/PostScanAnalysis.h"

namespace tessaly {

// An analysis that finds the first `count` entries of each list, or all.
PostScanAnalysis::Engines analysisThatFinds(std::size_t count);

}  // namespace tessaly
