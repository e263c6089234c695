// One picture of a preview. Its implicit size is its size in pixels of the screen; it is scaled
// smoothly to the size of the item.
#pragma once

#include <QImage>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

#include "app/controls/TexturedItem.h"
#include "app/quicklook/PreviewState.h"

namespace tessaly {

class PreviewPicture : public tessaly::TexturedItem {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(
      tessaly::PreviewState* preview READ preview WRITE setPreview NOTIFY previewChanged REQUIRED)
  Q_PROPERTY(int index READ index WRITE setIndex NOTIFY indexChanged REQUIRED)

 public:
  using TexturedItem::TexturedItem;

  PreviewState* preview() const { return preview_; }
  void setPreview(PreviewState* preview);
  int index() const { return index_; }
  void setIndex(int index);

 signals:
  void previewChanged();
  void indexChanged();

 protected:
  void paint(QPainter& painter) const override;
  void itemChange(ItemChange change, const ItemChangeData& data) override;

 private:
  void take();
  void fitToPicture();

  QPointer<PreviewState> preview_;
  int index_ = -1;
  QImage picture_;
};

}  // namespace tessaly
