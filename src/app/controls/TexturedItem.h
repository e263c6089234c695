// An item that is painted once into a picture, which is shown until something changes. In contrast
// to Qt's painted item it may paint outside its own bounds, as shadows need, and its pixels match
// those of the screen at every scale. Works with every renderer.
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

  // The present picture at this pixel ratio, with the same pixels as on the screen.
  QImage toImage(double devicePixelRatio) const;

 protected:
  // The area that paint() draws in, in the item's coordinates.
  virtual QRectF paintedRect() const { return boundingRect(); }
  // Paints in the item's coordinates. Runs on the render thread while the main thread waits.
  virtual void paint(QPainter& painter) const = 0;
  // A key that is equal for all items that look alike in the same area, so that a recent picture is
  // reused instead of being painted. Empty if there is none.
  virtual QByteArray likeness() const { return {}; }

  // Call it when the result of paint() changes.
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
