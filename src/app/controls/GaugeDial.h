// The ring of the storage gauge: an open track and, over it, the arc of the value, with a gradient
// from the accent to the colour of the level. The ring fills the item's width and is open at the
// bottom.
#pragma once

#include <QColor>
#include <QtQml/qqmlregistration.h>

#include "app/controls/TexturedItem.h"

namespace tessaly {

class GaugeDial : public tessaly::TexturedItem {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(double usedPercent READ usedPercent WRITE setUsedPercent NOTIFY usedPercentChanged)
  // The end of the value's arc, as a fraction of the circle.
  Q_PROPERTY(double arcEnd READ arcEnd NOTIFY usedPercentChanged)
  Q_PROPERTY(double strokeWidth READ strokeWidth CONSTANT)
  Q_PROPERTY(QColor trackColor READ trackColor CONSTANT)
  Q_PROPERTY(QColor levelColor READ levelColor NOTIFY usedPercentChanged)
  // The distance of the ring's centre from the item's top.
  Q_PROPERTY(double centerY READ centerY NOTIFY centerYChanged)

 public:
  explicit GaugeDial(QQuickItem* parent = nullptr);

  double usedPercent() const { return usedPercent_; }
  void setUsedPercent(double percent);
  double arcEnd() const;
  double strokeWidth() const { return 10; }
  QColor trackColor() const { return QColor(255, 255, 255, 20); }
  QColor levelColor() const;
  double centerY() const { return width() / 2; }

 signals:
  void usedPercentChanged();
  void centerYChanged();

 protected:
  void paint(QPainter& painter) const override;
  void geometryChange(const QRectF& now, const QRectF& before) override;

 private:
  double usedPercent_ = 0;
};

}  // namespace tessaly
