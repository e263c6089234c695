#include "app/map/PictureItem.h"

#include <QQuickWindow>
#include <QSGImageNode>

namespace tessaly {

PictureItem::PictureItem(QQuickItem* parent) : QQuickItem(parent) {
  setFlag(ItemHasContents, true);
}

void PictureItem::show(const PixelCanvas& picture) {
  image_ = picture.image();
  const QRectF pixels(picture.area());
  place_ = QRectF(pixels.topLeft() / picture.scale(), pixels.size() / picture.scale());
  ++pictureCount_;
  changed_ = true;
  update();
}

void PictureItem::clear() {
  if (image_.isNull()) return;
  image_ = {};
  changed_ = true;
  update();
}

QSGNode* PictureItem::updatePaintNode(QSGNode* old, UpdatePaintNodeData*) {
  auto* node = static_cast<QSGImageNode*>(old);
  if (image_.isNull()) {
    delete node;
    return nullptr;
  }
  if (node == nullptr) {
    node = window()->createImageNode();
    node->setOwnsTexture(true);
    changed_ = true;
  }
  if (changed_) {
    node->setTexture(window()->createTextureFromImage(image_));
    node->setSourceRect(QRectF(QPointF(0, 0), QSizeF(image_.size())));
    node->setRect(place_);
    changed_ = false;
  }
  return node;
}

}  // namespace tessaly
