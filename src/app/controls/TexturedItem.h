// An item that is painted once into a picture and shown as that picture until something about it
// changes. Unlike Qt's painted item it may paint outside its own bounds, which shadows need, and
// its pixels are those of the screen at every scale. Works on the software renderer and on the
// others.
#pragma once

#include <QByteArray>
#include <QImage>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

class QPainter;

namespace tessaly {

class TexturedItem : public QQuickItem {
  Q_OBJECT
  QML_ANONYMOUS

 public:
  explicit TexturedItem(QQuickItem* parent = nullptr);

  // What the item looks like now, at this pixel ratio: the same pixels as on the screen.
  QImage toImage(double devicePixelRatio) const;

 protected:
  // The area that paint() touches, in the item's own coordinates.
  virtual QRectF paintedRect() const { return boundingRect(); }
  // Paints in the item's own coordinates. Runs on the render thread while the main thread waits.
  virtual void paint(QPainter& painter) const = 0;
  // What is the same for all items that are painted the same in the same area, so that a picture of
  // late is shown again instead of being painted. Empty where that cannot be told.
  virtual QByteArray likeness() const { return {}; }

  // To be called when what paint() draws has changed.
  void repaint();

  QSGNode* updatePaintNode(QSGNode* old, UpdatePaintNodeData*) override;
  void geometryChange(const QRectF& now, const QRectF& before) override;
  void itemChange(ItemChange change, const ItemChangeData& data) override;

 private:
  QRectF pixelAlignedRect(double devicePixelRatio) const;
  QImage paintedOrKnown(double devicePixelRatio) const;

  bool dirty_ = true;
};

}  // namespace tessaly
