// Paints the ground of the canvas and its tiles, without labels.
#pragma once

#include <optional>

#include <QRect>
#include <QSizeF>

#include "app/map/CanvasTile.h"
#include "app/map/Glow.h"
#include "app/map/PixelCanvas.h"

namespace tessaly::TilePainter {

// The ground under the tiles, for a canvas of `size` points, with square corners.
void paintGround(PixelCanvas& canvas, QSizeF size);

// The line around the canvas, inside its edge.
void paintOutline(PixelCanvas& canvas, QSizeF size);

// Takes away what lies outside the rounded corners of the canvas.
void cutCorners(PixelCanvas& canvas, QSizeF size);

// The pixels of such a canvas that cover all behind them once it is painted: its rows between the
// corners. Empty where the canvas ends inside a pixel.
QRect opaquePart(QSizeF size, double scale);

// The glow that lies under a tile which is highlighted or selected.
std::optional<Glow> glowOf(const CanvasTile& tile, bool highlighted, double scale);

// Fill, sheen, wash and outline, over what the canvas shows already.
void paintBody(PixelCanvas& canvas, const CanvasTile& tile, bool highlighted);

// How far the body and the glow of a tile reach beyond its rectangle, in points.
double bodyReach(const CanvasTile& tile, bool highlighted);
double reach(const CanvasTile& tile, bool highlighted);

}  // namespace tessaly::TilePainter
