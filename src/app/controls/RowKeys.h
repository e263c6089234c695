// What keys do in a list: which row they lead to, and whether they ask for a menu. Rows are
// numbered from 0; -1 is no row. Pure.
#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace tessaly {

class RowKeys : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_SINGLETON

 public:
  using QObject::QObject;

  // For the arrows up and down, Page Up, Page Down, Home and End: the row that `key` (a Qt::Key)
  // leads to from `current` among `count` rows, `page` rows being a page. Never past the ends. -1
  // for other keys, and in an empty list.
  Q_INVOKABLE static int rowFor(int key, int current, int count, int page);

  // The menu key, or Shift F10. `modifiers` are Qt::KeyboardModifiers.
  Q_INVOKABLE static bool asksForMenu(int key, int modifiers);

  // By how many rows a page moves in a list of `count` rows of `contentHeight` in all, of which
  // `height` is in sight: by one row less than fit, and at least by one.
  Q_INVOKABLE static int rowsOfPage(double height, double contentHeight, int count);
};

}  // namespace tessaly
