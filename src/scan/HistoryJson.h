// The history of a root as JSON: an array of objects with the keys "at", "bytes" and "files", in
// this order and without blanks, oldest first. Pure, safe from any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "scan/HistoryPoint.h"

namespace tessaly::HistoryJson {

// Leaves out points whose time is not finite, since JSON cannot represent it.
std::string encode(const std::vector<HistoryPoint>& points);

// Decodes what encode() wrote; absent when `json` is anything else. Keys may be in any order, and
// unknown ones are ignored. Also refused are counts below zero, and times of 2^53 seconds or more
// before or after 1970, whose milliseconds do not fit 64 bits.
std::optional<std::vector<HistoryPoint>> decode(std::string_view json);

}  // namespace tessaly::HistoryJson
