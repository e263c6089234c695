#include "app/controls/RoundedPanel.h"

#include <algorithm>

#include <QDataStream>
#include <QIODevice>
#include <QLinearGradient>
#include <QPainter>

#include "app/controls/ContinuousShape.h"

namespace tessaly {

RoundedPanel::RoundedPanel(QQuickItem* parent) : TexturedItem(parent) {}

void RoundedPanel::setShadowOffset(double down) {
  QPointF offset = shadow_.offset;
  offset.setY(down);
  change(shadow_.offset, offset);
}

QRectF RoundedPanel::paintedRect() const {
  const QRectF shape = boundingRect();
  return shadow_.isVisible() ? shape.united(shadow_.paintedRect(shape)) : shape;
}

void RoundedPanel::paint(QPainter& painter) const {
  const QRectF shape = boundingRect();
  if (shape.isEmpty()) return;
  const double radius = std::min({radius_, shape.width() / 2, shape.height() / 2});
  const QPainterPath outer = ContinuousShape::path(shape, radius);
  shadow_.paint(painter, shape, radius);

  QLinearGradient gradient(shape.topLeft(), diagonal_ ? shape.bottomRight() : shape.bottomLeft());
  gradient.setColorAt(0, color_);
  gradient.setColorAt(1, endColor_.isValid() ? endColor_ : color_);
  painter.fillPath(outer, gradient);

  if (outlineWidth_ > 0 && outlineColor_.alpha() > 0) {
    const double half = outlineWidth_ / 2;
    painter.strokePath(ContinuousShape::path(shape.adjusted(half, half, -half, -half),
                                             std::max(0.0, radius - half)),
                       QPen(outlineColor_, outlineWidth_));
  }
}

QByteArray RoundedPanel::likeness() const {
  QByteArray style;
  QDataStream stream(&style, QIODevice::WriteOnly);
  stream << size() << radius_ << color_ << endColor_ << diagonal_ << outlineColor_ << outlineWidth_
         << shadow_.color << shadow_.radius << shadow_.offset;
  return style;
}

}  // namespace tessaly
