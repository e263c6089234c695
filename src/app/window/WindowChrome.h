// Takes the system's frame off the window that it is put into, so that the content reaches to its
// edges. It shows nothing itself, and does its work a moment after it has come into a window, and
// again with every change of it.
#pragma once

#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace tessaly {

class WindowChrome : public QQuickItem {
  Q_OBJECT
  QML_ELEMENT

 public:
  using QQuickItem::QQuickItem;

 protected:
  void itemChange(ItemChange change, const ItemChangeData& data) override;
  void updatePolish() override;
};

}  // namespace tessaly
