// Measures the known locations in the home whose contents can often be won back. Removes nothing.
//
// Calls block, up to the time limit of a tool for each location. Safe from any thread.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Places.h"
#include "reclaim/ReclaimItem.h"

namespace tessaly::ReclaimEngine {

// Bytes on disk of everything at the absolute `path`; 0 if there is nothing, or if it cannot be
// measured. ReclaimMeasure has the one for this machine.
using Measure = std::function<std::int64_t(const std::string& path)>;

// The locations in the order in which they are measured.
const std::vector<ReclaimPlace>& catalog(const Places& places = Places::current());

// The absolute path of the location, which is in the folder `home` or elsewhere.
std::string pathOf(const ReclaimPlace& place, const std::string& home);

// The locations of the user with the folder `home` that take more than 0 bytes, largest first;
// among equal sizes in the order of the catalogue.
std::vector<ReclaimItem> probe(const std::string& home, const Measure& measure,
                               const std::vector<ReclaimPlace>& places = catalog());

// Whether the row is the Trash, which can only be emptied. False for an unknown id.
bool isTrashAction(std::string_view id, const std::vector<ReclaimPlace>& places = catalog());

}  // namespace tessaly::ReclaimEngine
