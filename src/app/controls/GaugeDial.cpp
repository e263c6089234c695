#include "app/controls/GaugeDial.h"

#include <QConicalGradient>
#include <QPainter>
#include <QPainterPath>

#include "app/controls/GaugeLevel.h"
#include "app/controls/QtColor.h"
#include "look/MarrowTheme.h"

namespace tessaly {

namespace {

// Fractions run clockwise from the bottom of the circle; Qt's degrees run counter-clockwise from
// the right.
constexpr double kBottomDegrees = 270;

QPainterPath arc(const QRectF& circle, double from, double to) {
  QPainterPath path;
  path.arcMoveTo(circle, kBottomDegrees - from * 360);
  path.arcTo(circle, kBottomDegrees - from * 360, (from - to) * 360);
  return path;
}

QPen roundPen(const QBrush& brush, double width) {
  return QPen(brush, width, Qt::SolidLine, Qt::RoundCap);
}

}  // namespace

GaugeDial::GaugeDial(QQuickItem* parent) : TexturedItem(parent) {
  setImplicitSize(104, 86);
}

void GaugeDial::setUsedPercent(double percent) {
  if (percent == usedPercent_) return;
  usedPercent_ = percent;
  repaint();
  emit usedPercentChanged();
}

double GaugeDial::arcEnd() const {
  return Gauge::arcEnd(usedPercent_);
}

QColor GaugeDial::levelColor() const {
  return toQColor(Gauge::levelColor(Gauge::levelFor(usedPercent_)));
}

void GaugeDial::geometryChange(const QRectF& now, const QRectF& before) {
  TexturedItem::geometryChange(now, before);
  if (now.width() != before.width()) emit centerYChanged();
}

void GaugeDial::paint(QPainter& painter) const {
  const double diameter = width() - strokeWidth();
  if (diameter <= 0) return;
  const QRectF circle(strokeWidth() / 2, strokeWidth() / 2, diameter, diameter);
  painter.strokePath(arc(circle, Gauge::kArcStart, Gauge::kArcEnd),
                     roundPen(trackColor(), strokeWidth()));

  const double end = arcEnd();
  if (end <= Gauge::kArcStart) return;
  QConicalGradient gradient(circle.center(), kBottomDegrees);
  gradient.setColorAt(1 - end, levelColor());
  gradient.setColorAt(1 - Gauge::kArcStart, toQColor(MarrowTheme::accent));
  painter.strokePath(arc(circle, Gauge::kArcStart, end), roundPen(gradient, strokeWidth()));
}

}  // namespace tessaly
