// Squarified treemap of a folder: rectangles with areas in proportion to the sizes of its children
// and with aspect ratios as near to 1 as a greedy choice makes them; folders are opened to show
// their contents.
//
// The greedy rows are those of Bruls, Huizing and van Wijk, "Squarified Treemaps" (2000), with two
// decisions of our own: the area of a row is its share of the total of all items, taken from the
// remaining rectangle; and the last row takes the whole rest. So areas follow sizes only roughly,
// and the last tile of a list absorbs the difference.
//
// Pure functions, safe from any thread. Lengths are points and are never rounded. The sizes of one
// list must have a sum within 64 bits, or the program ends.
#pragma once

#include <vector>

#include "scan/DiskNode.h"
#include "treemap/Rect.h"
#include "treemap/TreemapRect.h"

namespace tessaly::TreemapLayout {

// Height of the strip that a nested tile keeps above the tiles inside it.
inline constexpr double headerBand = 20;

// The tiles of the contents of `node`, up to four levels deep, in `rect`: at most 500, none smaller
// than 5 by 5. A tile comes before all tiles inside it, siblings are sorted largest first, and each
// tile is inside that of its parent. Items that do not fit are left out without a mark.
std::vector<TreemapRect> layout(const DiskNode& node, const Rect& rect);

// Adjoining rectangles that fill `rect`, for the items in the order given, with depth 0 and
// parentSize 0. Items of size 0 and below get none, unless all are such. Empty unless `rect` is
// above 1 in width and height.
std::vector<TreemapRect> squarify(const std::vector<DiskNode>& items, const Rect& rect);

}  // namespace tessaly::TreemapLayout
