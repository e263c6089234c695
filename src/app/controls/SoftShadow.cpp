#include "app/controls/SoftShadow.h"

#include <algorithm>
#include <cmath>

#include <QCache>
#include <QImage>
#include <QPainter>

#include "app/controls/AlphaBlur.h"
#include "app/controls/ContinuousShape.h"

namespace tessaly {

namespace {

constexpr int kCachedSilhouettes = 48;

// A blurred silhouette in pixels: opacity only, with a `margin` of pixels round a shape that can be
// stretched at its middle row and column.
struct Silhouette {
  QImage alpha;
  int margin = 0;
};

Silhouette makeSilhouette(const QSize& shape, double cornerRadius, double sigma) {
  Silhouette made;
  made.margin = AlphaBlur::margin(sigma);
  QImage drawn(shape + QSize(2 * made.margin, 2 * made.margin),
               QImage::Format_ARGB32_Premultiplied);
  drawn.fill(Qt::transparent);
  QPainter painter(&drawn);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillPath(
      ContinuousShape::path(QRectF(QPointF(made.margin, made.margin), shape), cornerRadius),
      Qt::black);
  painter.end();
  made.alpha = drawn.convertToFormat(QImage::Format_Alpha8);
  AlphaBlur::blur(made.alpha, sigma);
  return made;
}

Silhouette silhouette(const QSize& shape, double cornerRadius, double sigma) {
  static QCache<QString, Silhouette> cache(kCachedSilhouettes);
  const QString key = QStringLiteral("%1|%2|%3|%4")
                          .arg(shape.width())
                          .arg(shape.height())
                          .arg(cornerRadius)
                          .arg(sigma);
  if (const Silhouette* known = cache.object(key)) return *known;
  auto* made = new Silhouette(makeSilhouette(shape, cornerRadius, sigma));
  Silhouette result = *made;
  cache.insert(key, made);
  return result;
}

QImage colored(const QImage& alpha, const QColor& color) {
  QImage image(alpha.size(), QImage::Format_ARGB32_Premultiplied);
  image.fill(color);
  // Multiplies, so that the colour's own opacity counts.
  image.setAlphaChannel(alpha);
  return image;
}

// Draws `image` in `target`, keeping `edgeX` and `edgeY` pixels at its sides and stretching the row
// and the column between them.
void drawStretched(QPainter& painter, const QImage& image, const QRect& target, int edgeX,
                   int edgeY) {
  const int sourceX[] = {0, edgeX, image.width() - edgeX, image.width()};
  const int sourceY[] = {0, edgeY, image.height() - edgeY, image.height()};
  const int targetX[] = {target.left(), target.left() + edgeX,
                         target.left() + target.width() - edgeX, target.left() + target.width()};
  const int targetY[] = {target.top(), target.top() + edgeY, target.top() + target.height() - edgeY,
                         target.top() + target.height()};
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column < 3; ++column) {
      const QRect from(sourceX[column], sourceY[row], sourceX[column + 1] - sourceX[column],
                       sourceY[row + 1] - sourceY[row]);
      const QRect to(targetX[column], targetY[row], targetX[column + 1] - targetX[column],
                     targetY[row + 1] - targetY[row]);
      if (!from.isEmpty() && !to.isEmpty()) painter.drawImage(to, image, from);
    }
  }
}

}  // namespace

double SoftShadow::extent() const {
  return radius > 0 ? 3 * radius + 1 : 0;
}

QRectF SoftShadow::paintedRect(const QRectF& shape) const {
  const double grown = extent();
  return shape.translated(offset).adjusted(-grown, -grown, grown, grown);
}

void SoftShadow::paint(QPainter& painter, const QRectF& shape, double cornerRadius) const {
  if (!isVisible() || shape.isEmpty()) return;
  const QTransform transform = painter.worldTransform();
  const double scale = transform.m11();
  const QRect pixels = transform.mapRect(shape.translated(offset)).toRect();
  if (pixels.isEmpty()) return;
  const double sigma = radius * scale;
  const double corner = cornerRadius * scale;
  const int margin = AlphaBlur::margin(sigma);

  // Beyond the reach of corner and blur, a side looks the same everywhere.
  const int edge = static_cast<int>(std::ceil(ContinuousShape::reach(corner))) + 2 * margin;
  const int width = std::min(pixels.width(), 2 * (edge - margin) + 1);
  const int height = std::min(pixels.height(), 2 * (edge - margin) + 1);
  const Silhouette shadow = silhouette(QSize(width, height), corner, sigma);

  painter.save();
  painter.resetTransform();
  drawStretched(painter, colored(shadow.alpha, color),
                pixels.adjusted(-margin, -margin, margin, margin), (shadow.alpha.width() - 1) / 2,
                (shadow.alpha.height() - 1) / 2);
  painter.restore();
}

}  // namespace tessaly
