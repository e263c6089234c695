#include "app/map/PictureItem.h"

#include <QQuickWindow>
#include <QRegion>
#include <QSGImageNode>

namespace tessaly {

PictureItem::PictureItem(QQuickItem* parent) : QQuickItem(parent) {
  setFlag(ItemHasContents, true);
}

void PictureItem::show(const PixelCanvas& picture, const QRect& opaque) {
  pieces_.clear();
  const QPoint origin = picture.area().topLeft();
  const auto cut = [&](const QRect& part) {
    return picture.image().copy(part.translated(-origin));
  };
  const QRect covering = opaque & picture.area();
  for (const QRect& part : QRegion(picture.area()) - covering) {
    add(cut(part), part, picture.scale());
  }
  if (!covering.isEmpty()) {
    QImage image = cut(covering);
    image.reinterpretAsFormat(QImage::Format_RGB32);
    add(image, covering, picture.scale());
  }
  countPicture();
}

void PictureItem::show(const std::vector<PixelCanvas>& pieces) {
  pieces_.clear();
  for (const PixelCanvas& piece : pieces) add(piece.image(), piece.area(), piece.scale());
  countPicture();
}

void PictureItem::add(const QImage& image, const QRect& pixels, double scale) {
  const QRectF place(pixels);
  pieces_.push_back(
      {.image = image, .place = QRectF(place.topLeft() / scale, place.size() / scale)});
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
