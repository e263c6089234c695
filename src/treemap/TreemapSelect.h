// What a rubber band selects on a treemap. Pure, safe from any thread.
#pragma once

#include <vector>

#include "scan/DiskNode.h"
#include "treemap/Rect.h"
#include "treemap/TreemapRect.h"

namespace tessaly::TreemapSelect {

// The nodes of `rects` that the band `marquee` selects, in the order of `rects`. A folder is
// selected only when the band touches none of the tiles inside it. A band of less than 4 points in
// width or height selects nothing.
std::vector<DiskNode> hits(const std::vector<TreemapRect>& rects, const Rect& marquee);

}  // namespace tessaly::TreemapSelect
