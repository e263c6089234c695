// The segments of the bar under a folder's name, one for each kind in it. It fills its parent
// except for fractions of a pixel: all edges of the segments are edges of the screen's pixels,
// wherever the parent is.
#pragma once

#include <vector>

#include <QColor>
#include <QPointer>
#include <QRectF>
#include <QtQml/qqmlregistration.h>

#include "app/controls/TexturedItem.h"
#include "app/panes/KindBreakdownModel.h"

namespace tessaly {

class BreakdownSegments : public tessaly::TexturedItem {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(
      tessaly::KindBreakdownModel* slices READ slices WRITE setSlices NOTIFY slicesChanged REQUIRED)

 public:
  struct Segment {
    QRectF place;  // in points of this item
    QColor color;

    friend bool operator==(const Segment&, const Segment&) = default;
  };

  using TexturedItem::TexturedItem;

  KindBreakdownModel* slices() const { return slices_; }
  void setSlices(KindBreakdownModel* slices);

  const std::vector<Segment>& segments() const { return segments_; }

 signals:
  void slicesChanged();

 protected:
  void updatePolish() override;
  void paint(QPainter& painter) const override;
  void itemChange(ItemChange change, const ItemChangeData& data) override;

 private:
  void followPlace();

  QPointer<KindBreakdownModel> slices_;
  std::vector<Segment> segments_;
  std::vector<QMetaObject::Connection> watched_;  // to the parent and its ancestors
};

}  // namespace tessaly
