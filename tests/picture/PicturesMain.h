// What all tests of one process that takes pictures stand on.
#pragma once

#include "fixture/ScratchSession.h"

namespace tessaly {

// The user whose session they run in.
ScratchSession& scratchSession();

}  // namespace tessaly
