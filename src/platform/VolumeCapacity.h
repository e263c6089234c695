// The size and the free space of the volume that contains a path.
//
// Asks the system on each call, which may block while a network volume does not answer. Safe from
// any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/SystemError.h"

namespace tessaly {

// In bytes. A figure is absent if the system does not report it, or if it does not fit.
struct VolumeCapacity {
  std::optional<std::int64_t> total;

  // Free for this user now, without purging anything.
  std::optional<std::int64_t> available;

  // Free after the system has purged what it can for something the user asked for, or for
  // background work. Reported only by a system that purges by itself.
  std::optional<std::int64_t> availableForImportantUsage;
  std::optional<std::int64_t> availableForOpportunisticUsage;

  friend bool operator==(const VolumeCapacity&, const VolumeCapacity&) = default;
};

Result<VolumeCapacity> volumeCapacity(const std::string& path);

}  // namespace tessaly
