// What the system tells of an item, as an identity.
#pragma once

#include <sys/stat.h>

#include "platform/FileIdentity.h"

namespace tessaly {

FileIdentity identityFrom(const struct stat& status);

}  // namespace tessaly
