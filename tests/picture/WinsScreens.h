// What the fake machine of a picture has that can be won back.
#pragma once

#include "session/WinsPass.h"

namespace tessaly {

enum class WinsOnDisk { none, one, many };

WinsPass::Engines enginesThatFind(WinsOnDisk wins);

}  // namespace tessaly
