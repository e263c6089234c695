// The keys of a list: the row that a key moves to, and whether it requests a menu, as on the map.
// Rows are numbered from 0; -1 is no row. Pure functions.
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
  // moves to from `current` in a list of `count` rows, with `page` rows per page. Never past the
  // ends. -1 for other keys, and in an empty list.
  Q_INVOKABLE static int rowFor(int key, int current, int count, int page);

  // Whether it is the menu key or Shift F10. `modifiers` are Qt::KeyboardModifiers.
  Q_INVOKABLE static bool asksForMenu(int key, int modifiers);

  // The number of rows by which a page key moves in a list of `count` rows with a total height of
  // `contentHeight`, of which `height` is visible: one less than fit, and at least one.
  Q_INVOKABLE static int rowsOfPage(double height, double contentHeight, int count);
};

}  // namespace tessaly
