// The scans of a history in words. Times are local. Pure, apart from the time zone.
#pragma once

#include <cstddef>
#include <vector>

#include <QString>

#include "scan/HistoryPoint.h"

namespace tessaly::HistoryTexts {

// "2026-11-22 19:50" for a time in seconds since 1970; empty for one that no calendar has.
QString time(double at);
// "2026-11-22".
QString date(double at);

// What a scan found, and how it differs from the one before: "2026-11-22 19:50: 40.0 GB, 2.0 GB
// more than the scan before". `index` is one of `points`.
QString scan(const std::vector<HistoryPoint>& points, std::size_t index);

// All scans in one sentence; empty if there are none.
QString summary(const std::vector<HistoryPoint>& points);

}  // namespace tessaly::HistoryTexts
