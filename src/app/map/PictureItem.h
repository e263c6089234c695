// An item that shows a given picture pixel for pixel, with every renderer. Its own size does not
// affect the position of the picture.
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

  // Shows these pixels at their position in the item's coordinates. Those in `opaque`, also in
  // pixels of the canvas, hide everything behind them, so that nothing else is drawn where they
  // change.
  void show(const PixelCanvas& picture, const QRect& opaque);
  // The same for a picture in pieces.
  void show(const std::vector<PixelCanvas>& pieces);

  void clear();

  bool isClear() const { return pieces_.empty(); }

  // The number of pictures shown so far.
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
