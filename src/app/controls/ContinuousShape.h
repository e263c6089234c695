// Rounded rectangles whose corners bend gradually instead of switching from straight to round.
//
// The curve of a corner is that of the superellipse |x|^n + |y|^n = 1, scaled so that it cuts off
// as much of the corner as a quarter circle of the same radius. n is 2.5.
#pragma once

#include <QPainterPath>
#include <QRectF>

namespace tessaly::ContinuousShape {

// The outline of `rect` with continuous corners of `radius`, which is limited to half of the
// shorter side. If there is no space for the gradual part, n decreases to 2, and the corners become
// round.
QPainterPath path(const QRectF& rect, double radius);

// How far a corner of this radius extends along a side, given enough space.
double reach(double radius);

// The distance of the curve from one side at the distance `along` from the other, both relative to
// the reach.
double inset(double along);

}  // namespace tessaly::ContinuousShape
