// The mounted volumes that a person knows. Safe from any thread.
#pragma once

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "platform/Places.h"
#include "system/Shell.h"
#include "system/VolumeMount.h"

namespace tessaly::VolumeEngine {

// Mount points that are never listed.
inline const std::unordered_set<std::string>& skipMounts(const Places& places = Places::current()) {
  return places.volumes.skipMounts;
}

// The volumes of now, in the order of df, which `run`, or Shell::run when it is empty, starts.
// Blocks until that has ended or given up; empty when it fails.
std::vector<VolumeMount> list(const Shell::Run& run = {});

// The volumes of what "df -k" prints, in its order and each mount point once. The mount point is
// the last word of a row, so that one with a blank in its path is not listed. Rows that cannot be
// read are passed over, as are sizes that do not fit. Pure.
std::vector<VolumeMount> parse(std::string_view text, const Places& places = Places::current());

}  // namespace tessaly::VolumeEngine
