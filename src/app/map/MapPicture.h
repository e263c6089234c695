// Composes the picture of a treemap from background, tiles and labels. Main thread only.
#pragma once

#include <cstddef>
#include <vector>

#include <QSizeF>

#include "app/map/CanvasTiles.h"
#include "app/map/LabelPainter.h"
#include "app/map/PixelCanvas.h"

namespace tessaly::MapPicture {

// The whole canvas of `size` points at `scale` pixels per point, without a highlighted tile.
PixelCanvas whole(const CanvasTiles& tiles, QSizeF size, double scale, LabelPainter& labels);

// The overlay for the highlighted tile at `index`: the highlighted tile and the glow around it,
// without the parts that later tiles cover. The pieces do not overlap, and cover exactly the
// visible part: for a folder full of tiles, its header and the strips between them. Empty for a
// selected tile, which looks the same when highlighted.
std::vector<PixelCanvas> highlight(const CanvasTiles& tiles, std::size_t index, QSizeF size,
                                   double scale, LabelPainter& labels);

}  // namespace tessaly::MapPicture
