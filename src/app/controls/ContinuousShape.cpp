#include "app/controls/ContinuousShape.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include <QPolygonF>
#include <QTransform>

namespace tessaly::ContinuousShape {

namespace {

constexpr double exponentWithRoom = 2.5;
// The distance from the corner, along each side, to the middle of a quarter circle of radius 1.
constexpr double cutOff = 1 - 1 / std::numbers::sqrt2;
// The number of line segments per corner. Their distance from the curve is below a thousandth of
// the radius.
constexpr int pieces = 32;

// The exponent of the curve with a reach of `reach` times the radius.
double exponentOf(double reach) {
  return -1 / std::log2(1 - cutOff / reach);
}

}  // namespace

double reach(double radius) {
  return radius * cutOff / (1 - std::pow(0.5, 1 / exponentWithRoom));
}

double inset(double along) {
  return 1 - std::pow(1 - std::pow(1 - along, exponentWithRoom), 1 / exponentWithRoom);
}

QPainterPath path(const QRectF& rect, double radius) {
  QPainterPath path;
  const double room = std::min(rect.width(), rect.height()) / 2;
  const double limited = std::clamp(radius, 0.0, std::max(0.0, room));
  if (limited <= 0) {
    path.addRect(rect);
    return path;
  }
  const double length = std::min(reach(limited), room);
  const double power = 2 / exponentOf(length / limited);
  QPolygonF outline;
  const QPointF corners[] = {rect.topLeft(), rect.topRight(), rect.bottomRight(),
                             rect.bottomLeft()};
  for (int i = 0; i < 4; ++i) {
    QTransform frame;
    frame.translate(corners[i].x(), corners[i].y());
    frame.rotate(90.0 * i);
    for (int k = 0; k <= pieces; ++k) {
      const double angle = k * std::numbers::pi / 2 / pieces;
      const QPointF onCurve(1 - std::pow(std::cos(angle), power),
                            1 - std::pow(std::sin(angle), power));
      outline << frame.map(onCurve * length);
    }
  }
  path.addPolygon(outline);
  path.closeSubpath();
  return path;
}

}  // namespace tessaly::ContinuousShape
