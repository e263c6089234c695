#include "app/map/PictureItem.h"

#include <QQuickWindow>
#include <QSGImageNode>

namespace tessaly {

PictureItem::PictureItem(QQuickItem* parent) : QQuickItem(parent) {
  setFlag(ItemHasContents, true);
}

void PictureItem::show(const PixelCanvas& picture) {
  pieces_.clear();
  add(picture);
  countPicture();
}

void PictureItem::show(const std::vector<PixelCanvas>& pieces) {
  pieces_.clear();
  for (const PixelCanvas& piece : pieces) add(piece);
  countPicture();
}

void PictureItem::add(const PixelCanvas& picture) {
  const QRectF pixels(picture.area());
  pieces_.push_back(
      {.image = picture.image(),
       .place = QRectF(pixels.topLeft() / picture.scale(), pixels.size() / picture.scale())});
}

void PictureItem::countPicture() {
  ++pictureCount_;
  changed_ = true;
  update();
}

void PictureItem::clear() {
  if (pieces_.empty()) return;
  pieces_.clear();
  changed_ = true;
  update();
}

QSGNode* PictureItem::updatePaintNode(QSGNode* old, UpdatePaintNodeData*) {
  if (old != nullptr && !changed_) return old;
  changed_ = false;
  delete old;
  if (pieces_.empty()) return nullptr;
  auto* const all = new QSGNode;
  for (const Piece& piece : pieces_) {
    QSGImageNode* const node = window()->createImageNode();
    node->setOwnsTexture(true);
    node->setTexture(window()->createTextureFromImage(piece.image));
    node->setSourceRect(QRectF(QPointF(0, 0), QSizeF(piece.image.size())));
    node->setRect(piece.place);
    all->appendChildNode(node);
  }
  return all;
}

}  // namespace tessaly
