#include "app/controls/TexturedItem.h"

#include <cmath>

#include <QCache>
#include <QDataStream>
#include <QIODevice>
#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>

namespace tessaly {

namespace {

// Enough for items that change their size with each move of the pointer.
constexpr int keptKilobytes = 2048;

}  // namespace

TexturedItem::TexturedItem(QQuickItem* parent) : QQuickItem(parent) {
  setFlag(ItemHasContents, true);
}

// The painted area enlarged to whole pixels, so that no pixel is stretched.
QRectF TexturedItem::pixelAlignedRect(double devicePixelRatio) const {
  const QRectF rect = paintedRect();
  const double left = std::floor(rect.left() * devicePixelRatio);
  const double top = std::floor(rect.top() * devicePixelRatio);
  const double right = std::ceil(rect.right() * devicePixelRatio);
  const double bottom = std::ceil(rect.bottom() * devicePixelRatio);
  return QRectF(left, top, right - left, bottom - top);
}

QImage TexturedItem::toImage(double devicePixelRatio) const {
  const QRectF pixels = pixelAlignedRect(devicePixelRatio);
  if (pixels.isEmpty()) return {};
  QImage image(pixels.size().toSize(), QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(-pixels.topLeft());
  painter.scale(devicePixelRatio, devicePixelRatio);
  paint(painter);
  return image;
}

QImage TexturedItem::paintedOrKnown(double devicePixelRatio) const {
  QByteArray key = likeness();
  if (key.isEmpty()) return toImage(devicePixelRatio);
  QDataStream stream(&key, QIODevice::Append);
  stream << pixelAlignedRect(devicePixelRatio) << devicePixelRatio;
  // Shared by all items, since they are painted one at a time.
  static QCache<QByteArray, QImage> known(keptKilobytes);
  if (const QImage* image = known.object(key)) return *image;
  QImage image = toImage(devicePixelRatio);
  known.insert(key, new QImage(image), 1 + static_cast<int>(image.sizeInBytes() / 1024));
  return image;
}

void TexturedItem::repaint() {
  dirty_ = true;
  update();
}

QSGNode* TexturedItem::updatePaintNode(QSGNode* old, UpdatePaintNodeData*) {
  const double ratio = window()->effectiveDevicePixelRatio();
  auto* node = static_cast<QSGImageNode*>(old);
  if (node != nullptr && !dirty_) return node;
  dirty_ = false;

  const QImage image = paintedOrKnown(ratio);
  if (image.isNull()) {
    delete node;
    return nullptr;
  }
  if (node == nullptr) {
    node = window()->createImageNode();
    node->setOwnsTexture(true);
  }
  const QRectF pixels = pixelAlignedRect(ratio);
  node->setTexture(window()->createTextureFromImage(image));
  node->setFiltering(QSGTexture::Linear);
  node->setSourceRect(QRectF(QPointF(0, 0), pixels.size()));
  node->setRect(QRectF(pixels.topLeft() / ratio, pixels.size() / ratio));
  return node;
}

void TexturedItem::geometryChange(const QRectF& now, const QRectF& before) {
  QQuickItem::geometryChange(now, before);
  if (now.size() != before.size()) repaint();
}

void TexturedItem::itemChange(ItemChange change, const ItemChangeData& data) {
  QQuickItem::itemChange(change, data);
  if (change == ItemDevicePixelRatioHasChanged || change == ItemSceneChange) repaint();
}

}  // namespace tessaly
