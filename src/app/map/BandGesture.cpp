#include "app/map/BandGesture.h"

#include <algorithm>
#include <cmath>

#include <QLineF>

namespace tessaly {

void BandGesture::press(QPointF point) {
  end();
  pressedAt_ = point;
}

bool BandGesture::moveTo(QPointF point) {
  if (!pressedAt_) return false;
  if (!dragStart_ && QLineF(*pressedAt_, point).length() >= startDistance) dragStart_ = pressedAt_;
  if (dragStart_) dragCurrent_ = point;
  return isDragging();
}

void BandGesture::end() {
  pressedAt_ = dragStart_ = dragCurrent_ = std::nullopt;
}

std::optional<Rect> BandGesture::band() const {
  if (!dragStart_ || !dragCurrent_) return std::nullopt;
  return Rect{
      std::min(dragStart_->x(), dragCurrent_->x()), std::min(dragStart_->y(), dragCurrent_->y()),
      std::abs(dragStart_->x() - dragCurrent_->x()), std::abs(dragStart_->y() - dragCurrent_->y())};
}

}  // namespace tessaly
