// What all tests in a process that takes pictures share.
#pragma once

#include "fixture/ScratchSession.h"

namespace tessaly {

// The session of the fake user.
ScratchSession& scratchSession();

}  // namespace tessaly
