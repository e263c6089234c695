// Squarified treemap of a folder: rectangles whose areas follow the sizes of its children and whose
// sides are as equal as a greedy choice makes them, folders opened up to show what they hold.
//
// The greedy rows are those of Bruls, Huizing and van Wijk, "Squarified Treemaps" (2000), with two
// decisions of our own: the area of a row is its share of the total of all items, taken from the
// rectangle that is left; and the last row takes all that is left. So areas follow sizes only
// roughly, and the last tile of a list absorbs the difference.
//
// Pure functions, safe from any thread. Lengths are points and are never rounded. The sizes of one
// list must have a sum within 64 bits, or the program ends.
#pragma once

#include <vector>

#include "scan/DiskNode.h"
#include "treemap/Rect.h"
#include "treemap/TreemapRect.h"

namespace tessaly::TreemapLayout {

// Height of what is left of a nested tile above the tiles that it holds.
inline constexpr double headerBand = 20;

// The tiles of what lies in `node`, up to four levels deep, drawn in `rect`: at most 500, none
// smaller than 5 by 5. A tile stands before all tiles inside it, siblings stand largest first, and
// each lies inside the tile of its parent. What does not fit is left out without a mark.
std::vector<TreemapRect> layout(const DiskNode& node, const Rect& rect);

// Rectangles that fill `rect`, for the items in the order given, touching each other, with depth 0
// and parentSize 0. Items of size 0 and less get none, unless all are. Empty when `rect` is not
// above 1 in width and height.
std::vector<TreemapRect> squarify(const std::vector<DiskNode>& items, const Rect& rect);

}  // namespace tessaly::TreemapLayout
