// The colour of a treemap tile, and its age in words. Safe from any thread.
#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "look/Color.h"
#include "scan/DiskNode.h"
#include "treemap/BloatFilter.h"

namespace tessaly::NodeTint {

// The time of the system's clock, in seconds since 1970.
double presentTime();

// The colour of `node`: by age if `heatmap`, else by whether an enabled filter of `filters`
// matches, else a warning colour if its path is in `grew`, else base(). A filter matches when one
// of its patterns is part of the name or of the path, in any case; while any filter is enabled,
// nodes without a match are faint. `now` is in seconds since 1970.
Color color(const DiskNode& node, const std::vector<BloatFilter>& filters,
            const std::set<std::string>& grew, bool heatmap, double now = presentTime());

// The colour of `node` without filters and growth: a folder's by its name, a file's by its kind.
Color base(const DiskNode& node);

// The time since `mtime` in words: "Today", "29 days ago", "11 mo ago", "2+ yr ago", and "Unknown
// date" for an absent time or one not above 0. Both times are in seconds since 1970.
std::string ageLabel(std::optional<double> mtime, double now = presentTime());

}  // namespace tessaly::NodeTint
