// Rounded rectangles whose corners bend gradually rather than switching from straight to round.
//
// The curve of a corner is that of the superellipse |x|^n + |y|^n = 1, which cuts off as much of
// the corner as a quarter circle of the same radius. n is 2.5.
#pragma once

#include <QPainterPath>
#include <QRectF>

namespace tessaly::ContinuousShape {

// The outline of `rect` with continuous corners of `radius`, which is limited to half the shorter
// side. Where there is no room for the gradual part, n falls to 2, and the corners become round.
QPainterPath path(const QRectF& rect, double radius);

// How far along a side a corner of this radius reaches when it has room.
double reach(double radius);

// How far from one side the curve of such a corner stands at `along` from the other, both as parts
// of its reach.
double inset(double along);

}  // namespace tessaly::ContinuousShape
