// Where the panel beside the pointer stands.
#pragma once

#include <QPointF>
#include <QSizeF>

namespace tessaly::TooltipPlacement {

// The panel's width, in points.
inline constexpr double width = 270;

// The top left of the panel for a pointer at `mouse` on a canvas of `canvas` points: to the lower
// right of the pointer, flipped to the other side on each axis where it would not fit, and never
// nearer than 8 to the left and upper edge. The height is allowed for and not measured, so a panel
// with a long path may reach beyond the lower edge.
QPointF topLeft(QPointF mouse, QSizeF canvas);

}  // namespace tessaly::TooltipPlacement
