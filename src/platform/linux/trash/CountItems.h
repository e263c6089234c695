// How much lies in one folder of things thrown away.
#pragma once

#include <cstdint>

#include "platform/SystemError.h"
#include "platform/linux/trash/UserTrashFolders.h"

namespace tessaly {

// The items in it, and not what is in them. 0 where it has no place for items.
Result<std::int64_t> countItems(const UserTrashFolder& trash);

}  // namespace tessaly
