// What the lists show about the scanned home folder: scored files, a folder to compare it with, and
// earlier scans.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "reclaim/SafeItem.h"
#include "scan/DiskNode.h"
#include "scan/HistoryPoint.h"

namespace tessaly {

// The present time of the fixture, in seconds since 1970.
inline constexpr double fixtureNow = 1700000000;

// The first `count` of its large unused files, or all.
std::vector<SafeItem> fixtureSafeItems(std::size_t count);

inline constexpr const char* fixtureBackup = "/media/ada/Backup";

// An older copy of the home folder on another disk.
DiskNode fixtureBackupTree();
// A copy that differs in one small file alone.
DiskNode fixtureCopyTree();

// The scans of half a year, oldest first; the scan of today follows.
std::vector<HistoryPoint> fixtureHistory();

}  // namespace tessaly
