// An item that shows a picture made elsewhere, pixel for pixel, on every renderer. Its own size has
// no part in where the picture stands.
#pragma once

#include <vector>

#include <QImage>
#include <QQuickItem>
#include <QRect>

#include "app/map/PixelCanvas.h"

namespace tessaly {

class PictureItem : public QQuickItem {
  Q_OBJECT

 public:
  explicit PictureItem(QQuickItem* parent = nullptr);

  // Shows these pixels where they belong, in the item's coordinates. Those in `opaque`, pixels of
  // the canvas as well, cover all behind them: where they change, nothing else is drawn.
  void show(const PixelCanvas& picture, const QRect& opaque);
  // The same for a picture in pieces.
  void show(const std::vector<PixelCanvas>& pieces);

  // Shows nothing.
  void clear();

  bool isClear() const { return pieces_.empty(); }

  // How many pictures it has been given so far.
  int pictureCount() const { return pictureCount_; }

 protected:
  QSGNode* updatePaintNode(QSGNode* old, UpdatePaintNodeData* data) override;

 private:
  struct Piece {
    QImage image;
    QRectF place;
  };

  void add(const QImage& image, const QRect& pixels, double scale);
  void countPicture();

  std::vector<Piece> pieces_;
  int pictureCount_ = 0;
  bool changed_ = false;
};

}  // namespace tessaly
