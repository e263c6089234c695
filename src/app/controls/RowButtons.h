// Where the buttons of a row stand, wherever in the row they are, and the places at which the row
// may stop when it is scrolled. Main thread only.
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
  // What scrolls; places are those of what it stands in. Its buttons are those that are to be seen.
  Q_PROPERTY(QQuickItem* row MEMBER row_ NOTIFY rowChanged REQUIRED)

 public:
  using QQuickItem::QQuickItem;

  // RowStops::stopAt for the buttons as they stand now.
  Q_INVOKABLE double stopAt(double x, bool forward) const;
  // To be called when buttons have come, gone or changed: asks for them to be laid out, and tells
  // when they are, before the next frame.
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
