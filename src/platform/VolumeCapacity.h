// How much the volume that holds a path takes, and how much of that is left.
//
// Asks the system on each call, which may block while a network volume does not answer. Safe from
// any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/SystemError.h"

namespace tessaly {

// In bytes. Each figure is absent where the system does not tell it, or tells one that does not
// fit.
struct VolumeCapacity {
  std::optional<std::int64_t> total;

  // Left for this user now, without anything being purged.
  std::optional<std::int64_t> available;

  // Left once the system has purged what it can for something the user asked for, and what it can
  // for something nobody waits for. Only a system that purges by itself tells them.
  std::optional<std::int64_t> availableForImportantUsage;
  std::optional<std::int64_t> availableForOpportunisticUsage;

  friend bool operator==(const VolumeCapacity&, const VolumeCapacity&) = default;
};

Result<VolumeCapacity> volumeCapacity(const std::string& path);

}  // namespace tessaly
