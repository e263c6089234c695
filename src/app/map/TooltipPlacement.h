// Where the panel beside the pointer stands.
#pragma once

#include <QPointF>
#include <QSizeF>

namespace tessaly::TooltipPlacement {

// The panel's width, in points.
inline constexpr double width = 270;

// The top left of the panel for a pointer at `mouse` on a canvas of `canvas` points: to the lower
// right of the pointer, and flipped to the other side on each axis where it would not fit. Whether
// it fits downward is told by a height that is allowed for, so that neighbouring tiles have their
// panels on the same side; then a panel of `height` points is moved back by as much as it is nearer
// than 8 to the right or lower edge, but never nearer than 8 to the left and upper one.
QPointF topLeft(QPointF mouse, QSizeF canvas, double height);

}  // namespace tessaly::TooltipPlacement
