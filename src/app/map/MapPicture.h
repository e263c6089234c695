// Puts the picture of a treemap together from ground, tiles and labels. Main thread only.
#pragma once

#include <cstddef>
#include <vector>

#include <QSizeF>

#include "app/map/CanvasTiles.h"
#include "app/map/LabelPainter.h"
#include "app/map/PixelCanvas.h"

namespace tessaly::MapPicture {

// The whole canvas of `size` points at `scale` pixels a point, no tile highlighted.
PixelCanvas whole(const CanvasTiles& tiles, QSizeF size, double scale, LabelPainter& labels);

// What is laid over that picture while the tile at `index` is highlighted: the tile as it then
// looks and the glow around it, with nothing where later tiles cover it. Pieces that do not overlap
// and together cover just what may be seen of it: of a folder that is full of tiles, its header and
// the strips between them. None for a selected tile, which looks the same either way.
std::vector<PixelCanvas> highlight(const CanvasTiles& tiles, std::size_t index, QSizeF size,
                                   double scale, LabelPainter& labels);

}  // namespace tessaly::MapPicture
