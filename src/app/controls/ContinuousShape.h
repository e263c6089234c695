// Rounded rectangles whose corners bend gradually rather than switching from straight to round.
//
// Each corner is a short arc between two cubic curves that take over part of the straight sides.
// How the four lengths follow from radius and smoothing is told in Daniel Furse's "Desperately
// seeking squircles" (Figma, 2018).
#pragma once

#include <QPainterPath>
#include <QRectF>

namespace tessaly::ContinuousShape {

// The outline of `rect` with continuous corners of `radius`, which is limited to half the shorter
// side. Where there is no room for the gradual part, the corners become round ones.
QPainterPath path(const QRectF& rect, double radius);

// How far along a side a corner of this radius reaches when it has room.
double reach(double radius);

}  // namespace tessaly::ContinuousShape
