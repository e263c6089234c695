// The identity of the item with these attributes.
#pragma once

#include <fcntl.h>
#include <sys/stat.h>

#include "platform/FileIdentity.h"

namespace tessaly {

// Without the time of its creation.
FileIdentity identityFrom(const struct stat& status);

// What statx() must be asked for.
inline constexpr unsigned identityMask = STATX_BASIC_STATS | STATX_BTIME;
FileIdentity identityFrom(const struct statx& status);

}  // namespace tessaly
