#include "app/quicklook/PreviewPicture.h"

#include <QPainter>
#include <QQuickWindow>

namespace tessaly {

void PreviewPicture::setPreview(PreviewState* preview) {
  if (preview == preview_) return;
  if (preview_) preview_->disconnect(this);
  preview_ = preview;
  if (preview_) connect(preview_, &PreviewState::changed, this, &PreviewPicture::take);
  take();
  emit previewChanged();
}

void PreviewPicture::setIndex(int index) {
  if (index == index_) return;
  index_ = index;
  take();
  emit indexChanged();
}

void PreviewPicture::take() {
  picture_ = preview_ ? preview_->picture(index_) : QImage();
  picture_.setDevicePixelRatio(1);
  fitToPicture();
  repaint();
}

void PreviewPicture::fitToPicture() {
  const double ratio = window() != nullptr ? window()->effectiveDevicePixelRatio() : 1;
  setImplicitSize(picture_.width() / ratio, picture_.height() / ratio);
}

void PreviewPicture::itemChange(ItemChange change, const ItemChangeData& data) {
  TexturedItem::itemChange(change, data);
  if (change == ItemDevicePixelRatioHasChanged || change == ItemSceneChange) fitToPicture();
}

// The painter alone would scale a large picture without smoothing.
void PreviewPicture::paint(QPainter& painter) const {
  if (picture_.isNull()) return;
  const double ratio = painter.worldTransform().m11();
  const QSize pixels = (size() * ratio).toSize();
  if (pixels == picture_.size()) {
    painter.drawImage(boundingRect(), picture_);
  } else {
    painter.drawImage(boundingRect(),
                      picture_.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
  }
}

}  // namespace tessaly
