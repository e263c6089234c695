// A rounded surface: a shadow, a fill of one colour or a gradient, and an outline inside the shape.
// It is painted on the processor, so its corners are smooth with every renderer; its shadow extends
// outside the item's bounds without affecting the layout.
#pragma once

#include <QColor>
#include <QtQml/qqmlregistration.h>

#include "app/controls/SoftShadow.h"
#include "app/controls/TexturedItem.h"

namespace tessaly {

class RoundedPanel : public tessaly::TexturedItem {
  Q_OBJECT
  QML_ELEMENT
  // Radius of the corners in points; more than half of the height makes a capsule.
  Q_PROPERTY(double radius MEMBER radius_ WRITE setRadius NOTIFY styleChanged)
  Q_PROPERTY(QColor color MEMBER color_ WRITE setColor NOTIFY styleChanged)
  // The colour at the end of a gradient from top to bottom; without it the fill is `color`.
  Q_PROPERTY(QColor endColor MEMBER endColor_ WRITE setEndColor NOTIFY styleChanged)
  // Whether the gradient ends at the bottom right corner instead of at the bottom.
  Q_PROPERTY(bool diagonal MEMBER diagonal_ WRITE setDiagonal NOTIFY styleChanged)
  Q_PROPERTY(QColor outlineColor MEMBER outlineColor_ WRITE setOutlineColor NOTIFY styleChanged)
  Q_PROPERTY(double outlineWidth MEMBER outlineWidth_ WRITE setOutlineWidth NOTIFY styleChanged)
  Q_PROPERTY(QColor shadowColor READ shadowColor WRITE setShadowColor NOTIFY styleChanged)
  Q_PROPERTY(double shadowRadius READ shadowRadius WRITE setShadowRadius NOTIFY styleChanged)
  // The downward offset of the shadow.
  Q_PROPERTY(double shadowOffset READ shadowOffset WRITE setShadowOffset NOTIFY styleChanged)

 public:
  explicit RoundedPanel(QQuickItem* parent = nullptr);

  void setRadius(double radius) { change(radius_, radius); }
  void setColor(const QColor& color) { change(color_, color); }
  void setEndColor(const QColor& color) { change(endColor_, color); }
  void setDiagonal(bool diagonal) { change(diagonal_, diagonal); }
  void setOutlineColor(const QColor& color) { change(outlineColor_, color); }
  void setOutlineWidth(double width) { change(outlineWidth_, width); }
  QColor shadowColor() const { return shadow_.color; }
  void setShadowColor(const QColor& color) { change(shadow_.color, color); }
  double shadowRadius() const { return shadow_.radius; }
  void setShadowRadius(double radius) { change(shadow_.radius, radius); }
  double shadowOffset() const { return shadow_.offset.y(); }
  void setShadowOffset(double down);

 signals:
  void styleChanged();

 protected:
  QRectF paintedRect() const override;
  void paint(QPainter& painter) const override;
  QByteArray likeness() const override;

 private:
  template <typename Value>
  void change(Value& field, const Value& value) {
    if (field == value) return;
    field = value;
    repaint();
    emit styleChanged();
  }

  double radius_ = 0;
  QColor color_ = Qt::transparent;
  QColor endColor_;
  bool diagonal_ = false;
  QColor outlineColor_ = Qt::transparent;
  double outlineWidth_ = 1;
  SoftShadow shadow_;
};

}  // namespace tessaly
