#include "app/map/BandItem.h"

#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGRectangleNode>

#include "app/controls/QtColor.h"

namespace tessaly {
namespace {

QRectF toPoints(const QRect& pixels, double scale) {
  const QRectF rect(pixels);
  return {rect.topLeft() / scale, rect.size() / scale};
}

}  // namespace

BandItem::BandItem(QQuickItem* parent) : QQuickItem(parent) {
  setFlag(ItemHasContents, true);
}

void BandItem::show(const Rect& band, QSizeF size, double scale) {
  band_ = band;
  scale_ = scale;
  picture_ = BandPicture::of(band, size, scale);
  update();
}

void BandItem::hide() {
  if (!band_) return;
  band_ = std::nullopt;
  picture_ = {};
  update();
}

// A band has few pieces, so they are created again for each frame in which it has changed.
QSGNode* BandItem::updatePaintNode(QSGNode* old, UpdatePaintNodeData*) {
  delete old;
  if (picture_.edges.empty()) return nullptr;
  auto* const all = new QSGNode;
  if (!picture_.inside.isEmpty()) {
    QSGRectangleNode* const inside = window()->createRectangleNode();
    inside->setRect(toPoints(picture_.inside, scale_));
    inside->setColor(toQColor(BandPicture::fill));
    all->appendChildNode(inside);
  }
  for (const PixelCanvas& edge : picture_.edges) {
    QSGImageNode* const node = window()->createImageNode();
    node->setOwnsTexture(true);
    node->setTexture(window()->createTextureFromImage(edge.image()));
    node->setSourceRect(QRectF(QPointF(0, 0), QSizeF(edge.image().size())));
    node->setRect(toPoints(edge.area(), scale_));
    all->appendChildNode(node);
  }
  return all;
}

}  // namespace tessaly
