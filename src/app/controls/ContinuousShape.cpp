#include "app/controls/ContinuousShape.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include <QTransform>

namespace tessaly::ContinuousShape {

namespace {

// The share of a quarter circle that the gradual part takes; this one is hard to tell from the
// corners that people know from their screens and devices.
constexpr double kSmoothing = 0.6;

// The lengths that make one corner. Walking along a side towards the corner, the curve leaves the
// side at `reach`, its control points stand `a` and `a + b` further on, and the arc begins `c`
// along and `d` off the side.
struct Corner {
  double radius;
  double reach;
  double a;
  double b;
  double c;
  double d;
  double arcDegrees;
};

Corner cornerOf(double radius, double room) {
  const double smoothing = std::clamp(room / std::max(radius, 1e-9) - 1, 0.0, kSmoothing);
  const double degree = std::numbers::pi / 180;
  const double arcDegrees = 90 * (1 - smoothing);
  const double arc = std::sin(arcDegrees / 2 * degree) * radius * std::numbers::sqrt2;
  const double tangent = radius * std::tan((90 - arcDegrees) / 4 * degree);
  const double c = tangent * std::cos(45 * smoothing * degree);
  const double d = c * std::tan(45 * smoothing * degree);
  const double reach = (1 + smoothing) * radius;
  const double b = (reach - arc - c - d) / 3;
  return {radius, reach, 2 * b, b, c, d, arcDegrees};
}

// Adds the corner that turns right, in a frame where the side just walked runs along the x axis to
// the corner at the origin and the next side goes down.
void addCorner(QPainterPath& path, const Corner& k, const QTransform& frame) {
  const auto at = [&](double x, double y) { return frame.map(QPointF(x, y)); };
  const double start = -k.reach;
  path.lineTo(at(start, 0));
  const QPointF arcStart(start + k.a + k.b + k.c, k.d);
  const QPointF arcEnd(-k.d, -(start + k.a + k.b + k.c));
  path.cubicTo(at(start + k.a, 0), at(start + k.a + k.b, 0), at(arcStart.x(), arcStart.y()));

  // The arc as one cubic; it spans at most a quarter circle.
  const double half = k.arcDegrees / 2 * std::numbers::pi / 180;
  const double handle = 4.0 / 3 * std::tan(half / 2) * k.radius;
  const double turn = (90 - k.arcDegrees) / 2 * std::numbers::pi / 180;
  const QPointF along(std::cos(turn), std::sin(turn));
  const QPointF back(std::sin(turn), std::cos(turn));
  const QPointF first = arcStart + along * handle;
  const QPointF second = arcEnd - back * handle;
  path.cubicTo(at(first.x(), first.y()), at(second.x(), second.y()), at(arcEnd.x(), arcEnd.y()));

  const double end = k.reach;
  path.cubicTo(at(0, end - k.a - k.b), at(0, end - k.a), at(0, end));
}

}  // namespace

double reach(double radius) {
  return (1 + kSmoothing) * radius;
}

QPainterPath path(const QRectF& rect, double radius) {
  QPainterPath path;
  const double room = std::min(rect.width(), rect.height()) / 2;
  const double limited = std::clamp(radius, 0.0, std::max(0.0, room));
  if (limited <= 0) {
    path.addRect(rect);
    return path;
  }
  const Corner corner = cornerOf(limited, room);
  path.moveTo(rect.left() + corner.reach, rect.top());
  const QPointF points[] = {rect.topRight(), rect.bottomRight(), rect.bottomLeft(), rect.topLeft()};
  for (int i = 0; i < 4; ++i) {
    QTransform frame;
    frame.translate(points[i].x(), points[i].y());
    frame.rotate(90.0 * i);
    addCorner(path, corner, frame);
  }
  path.closeSubpath();
  return path;
}

}  // namespace tessaly::ContinuousShape
