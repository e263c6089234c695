// The identity of the item with these attributes.
#pragma once

#include <sys/stat.h>

#include "platform/FileIdentity.h"

namespace tessaly {

FileIdentity identityFrom(const struct stat& status);

}  // namespace tessaly
