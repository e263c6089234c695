// Painted shadows and glows: the blurred silhouette of a rounded shape, made on the processor, so
// that it works with every renderer.
//
// A silhouette is blurred once for its radius and blur, and cached; its middle is stretched, so a
// shape of any size costs nine copies. Main thread only, or the render thread while the main thread
// waits for it.
#pragma once

#include <QColor>
#include <QRectF>

class QPainter;

namespace tessaly {

struct SoftShadow {
  QColor color = Qt::transparent;
  // The standard deviation of the blur, in points.
  double radius = 0;
  QPointF offset;

  bool isVisible() const { return color.alpha() > 0; }

  // How far the blur extends beyond the shape's edge, in points.
  double extent() const;

  // The area of the shadow of `shape`.
  QRectF paintedRect(const QRectF& shape) const;

  // Paints the shadow of the continuous shape `shape` with corners of `cornerRadius`. The painter
  // may be scaled and translated, but not rotated.
  void paint(QPainter& painter, const QRectF& shape, double cornerRadius) const;
};

}  // namespace tessaly
