// An invisible item that removes the system's frame from its window, so that the content reaches to
// the edges. It acts on the next polish after it is put into a window.
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
