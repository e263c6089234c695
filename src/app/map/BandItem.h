// The rubber band on the canvas. Takes no events; its own size does not matter.
#pragma once

#include <optional>

#include <QQuickItem>
#include <QSizeF>

#include "app/map/BandPicture.h"

namespace tessaly {

class BandItem : public QQuickItem {
  Q_OBJECT

 public:
  explicit BandItem(QQuickItem* parent = nullptr);

  // Draws the band `band` on a canvas of `size` points, at `scale` pixels per point.
  void show(const Rect& band, QSizeF size, double scale);

  void hide();

  // The present band, in points.
  const std::optional<Rect>& band() const { return band_; }

 protected:
  QSGNode* updatePaintNode(QSGNode* old, UpdatePaintNodeData* data) override;

 private:
  std::optional<Rect> band_;
  BandPicture picture_;
  double scale_ = 1;
};

}  // namespace tessaly
