// Paints the background of the canvas and its tiles, without labels.
#pragma once

#include <optional>

#include <QRect>
#include <QSizeF>

#include "app/map/CanvasTile.h"
#include "app/map/Glow.h"
#include "app/map/PixelCanvas.h"

namespace tessaly::TilePainter {

// The background of a canvas of `size` points, with square corners.
void paintGround(PixelCanvas& canvas, QSizeF size);

// The line around the canvas, inside its edge.
void paintOutline(PixelCanvas& canvas, QSizeF size);

// Clears the pixels outside the rounded corners of the canvas.
void cutCorners(PixelCanvas& canvas, QSizeF size);

// The pixels of a painted canvas that hide everything behind them: its rows between the corners.
// Empty if the canvas ends inside a pixel.
QRect opaquePart(QSizeF size, double scale);

// The glow under a highlighted or selected tile.
std::optional<Glow> glowOf(const CanvasTile& tile, bool highlighted, double scale);

// Fill, sheen, wash and outline, drawn over the canvas.
void paintBody(PixelCanvas& canvas, const CanvasTile& tile, bool highlighted);

// How far the body and the glow of a tile extend beyond its rectangle, in points.
double bodyReach(const CanvasTile& tile, bool highlighted);
double reach(const CanvasTile& tile, bool highlighted);

}  // namespace tessaly::TilePainter
