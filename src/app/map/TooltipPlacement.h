// The position of the panel beside the pointer.
#pragma once

#include <QPointF>
#include <QSizeF>

namespace tessaly::TooltipPlacement {

// The panel's width, in points.
inline constexpr double width = 270;

// The top left corner of the panel for a pointer at `mouse` on a canvas of `canvas` points: to the
// lower right of the pointer, and flipped on each axis where it would not fit. Whether it fits
// downward is decided with a fixed height, so that neighbouring tiles have their panels on the same
// side; then a panel of `height` points is moved to be at least 8 from the right and lower edge, if
// it can be at least 8 from the left and upper one.
QPointF topLeft(QPointF mouse, QSizeF canvas, double height);

}  // namespace tessaly::TooltipPlacement
