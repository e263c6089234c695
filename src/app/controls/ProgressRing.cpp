#include "app/controls/ProgressRing.h"

#include <algorithm>

#include <QConicalGradient>
#include <QPainter>
#include <QPen>

namespace tessaly {

namespace {

constexpr double trackOpacity = 0.08;
constexpr double lightOpacity = 0.55;
constexpr double lightLength = 70;  // degrees

// Angles of QPainter: sixteenths of a degree, counter-clockwise from three o'clock.
int sixteenths(double degrees) {
  return static_cast<int>(degrees * 16);
}

}  // namespace

ProgressRing::ProgressRing(QQuickItem* parent) : QQuickPaintedItem(parent) {
  setAntialiasing(true);
}

void ProgressRing::repaint() {
  emit changed();
  update();
}

void ProgressRing::setValue(double value) {
  value_ = std::clamp(value, 0.0, 1.0);
  repaint();
}

void ProgressRing::setTurn(double turn) {
  turn_ = turn;
  repaint();
}

void ProgressRing::setStrokeWidth(double width) {
  strokeWidth_ = width;
  repaint();
}

void ProgressRing::setFrom(const QColor& color) {
  from_ = color;
  repaint();
}

void ProgressRing::setTo(const QColor& color) {
  to_ = color;
  repaint();
}

void ProgressRing::paint(QPainter* painter) {
  const double half = strokeWidth_ / 2;
  const QRectF circle = QRectF(0, 0, width(), height()).adjusted(half, half, -half, -half);
  const QPointF centre = circle.center();
  painter->setRenderHint(QPainter::Antialiasing);
  painter->setBrush(Qt::NoBrush);
  painter->setPen(QPen(QColor(255, 255, 255, qRound(trackOpacity * 255)), strokeWidth_));
  painter->drawEllipse(circle);

  const double top = 90;
  const double light = top - 360 * turn_;
  QConicalGradient fade(centre, light);
  QColor tail = from_;
  tail.setAlphaF(0);
  QColor head = from_;
  head.setAlphaF(static_cast<float>(lightOpacity));
  fade.setColorAt(0, head);
  fade.setColorAt(lightLength / 360, tail);
  fade.setColorAt(1, tail);
  painter->setPen(QPen(QBrush(fade), strokeWidth_, Qt::SolidLine, Qt::FlatCap));
  painter->drawArc(circle, sixteenths(light), sixteenths(lightLength));

  if (value_ <= 0) return;
  const double span = 360 * value_;
  // The round caps extend before the start, so the gradient begins a little earlier.
  QConicalGradient sweep(centre, top + 20);
  sweep.setColorAt(0, from_);
  sweep.setColorAt(1 - std::min(1.0, value_), to_);
  sweep.setColorAt(1, from_);
  painter->setPen(QPen(QBrush(sweep), strokeWidth_, Qt::SolidLine, Qt::RoundCap));
  painter->drawArc(circle, sixteenths(top), -sixteenths(span));
}

}  // namespace tessaly
