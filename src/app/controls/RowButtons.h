// The positions of the buttons in a row, at any depth, and the positions at which the row may stop
// scrolling. Main thread only.
#pragma once

#include <vector>

#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

#include "app/controls/RowStops.h"

namespace tessaly {

class RowButtons : public QQuickItem {
  Q_OBJECT
  QML_ELEMENT
  // The scrolled item; positions are those in its parent. Only visible buttons count.
  Q_PROPERTY(QQuickItem* row MEMBER row_ NOTIFY rowChanged REQUIRED)

 public:
  using QQuickItem::QQuickItem;

  // RowStops::stopAt for the current positions of the buttons.
  Q_INVOKABLE double stopAt(double x, bool forward) const;
  // Call it when buttons have appeared, disappeared or changed: requests their layout, and emits a
  // signal when it is done, before the next frame.
  Q_INVOKABLE void layOut() { polish(); }

 signals:
  void rowChanged();
  void laidOut();

 protected:
  void updatePolish() override;

 private:
  void collect(QQuickItem& item, std::vector<RowStops::Span>& found) const;
  static void finish(QQuickItem& item);

  QPointer<QQuickItem> row_;
};

}  // namespace tessaly
