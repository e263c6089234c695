// Counts the items in one Trash folder.
#pragma once

#include <cstdint>

#include "platform/SystemError.h"
#include "platform/linux/trash/UserTrashFolders.h"

namespace tessaly {

// Number of items, not counting their contents. 0 if there is no folder "files".
Result<std::int64_t> countItems(const UserTrashFolder& trash);

}  // namespace tessaly
