// The links of a folder whose targets are gone.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/MountSnapshot.h"
#include "platform/Places.h"
#include "reclaim/DeadLink.h"

namespace tessaly::ProInsights {

// The first `limit` symbolic links and aliases below `root` whose targets certainly do not exist,
// in the order of a walk. Links whose targets cannot be determined are left out, above all those on
// file systems that may never answer, see LinkTargets. The walk enters neither the folders that
// `places` says no walk enters, nor packages, nor file systems below the root that another machine
// or program serves: links there have their meaning on that machine.
//
// Blocks; asks `isCancelled` at least every 50 ms unless a file system is slower, and then returns
// what it has. Null `mounts`: the present ones.
std::vector<DeadLink> deadLinks(const std::string& root, int limit,
                                const std::function<bool()>& isCancelled = {},
                                const Places& places = Places::current(),
                                std::shared_ptr<const MountSnapshot> mounts = nullptr);

}  // namespace tessaly::ProInsights
