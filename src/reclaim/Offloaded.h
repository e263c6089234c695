// The items of a folder that are in the cloud without a copy on this disk.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/CloudPlaceholders.h"
#include "platform/MountSnapshot.h"
#include "reclaim/CloudItem.h"

namespace tessaly::ProInsights {

// The size of the item for which the file `name` in `folder` stands, as CloudPlaceholders::sizeOf.
using SizeInCloud =
    std::function<std::optional<std::int64_t>(const std::string& folder, const std::string& name)>;

// The first `limit` of them below `root` in the order of a walk, sorted by size, the largest first.
// The walk enters every folder, except on file systems below the root that another machine or
// program serves.
//
// Blocks; asks `isCancelled` at least every 50 ms unless a file system is slower, and then returns
// what it has. Null `mounts`: the present ones. `sizeOf` tells which files stand for an item.
std::vector<CloudItem> offloaded(const std::string& root, int limit,
                                 const std::function<bool()>& isCancelled = {},
                                 const std::shared_ptr<const MountSnapshot>& mounts = nullptr,
                                 const SizeInCloud& sizeOf = CloudPlaceholders::sizeOf);

}  // namespace tessaly::ProInsights
