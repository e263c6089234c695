// The history of a root as JSON: an array of objects with the keys "at", "bytes" and "files", in
// this order and without blanks, oldest first. Pure, safe from any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "scan/HistoryPoint.h"

namespace tessaly::HistoryJson {

// Leaves out a point whose time is not finite, which JSON cannot say.
std::string encode(const std::vector<HistoryPoint>& points);

// The points that were encoded; absent when `json` is anything else. Keys may stand in any order,
// and unknown ones are passed over. Refused as well are counts below zero, and times of 2^53
// seconds and more on either side of 1970, whose milliseconds no longer fit 64 bits.
std::optional<std::vector<HistoryPoint>> decode(std::string_view json);

}  // namespace tessaly::HistoryJson
