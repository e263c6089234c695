// The keys of a menu: the next highlighted row, the chosen row, and when the menu closes. The
// highlighted row has the focus in its focus scope, and is scrolled into view.
//
// Main thread only.
#pragma once

#include <functional>

#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "app/controls/MenuRow.h"

namespace tessaly {

class MenuNavigation : public QObject {
  Q_OBJECT
  QML_ELEMENT
  // Its children of type MenuRow are the rows, from the top; others cannot be chosen.
  Q_PROPERTY(QQuickItem* column READ column WRITE setColumn NOTIFY columnChanged REQUIRED)
  // The Flickable with the column as its content.
  Q_PROPERTY(QQuickItem* view MEMBER view_ NOTIFY viewChanged REQUIRED)

 public:
  using QObject::QObject;

  QQuickItem* column() const { return column_; }
  void setColumn(QQuickItem* column);

  // Highlights no row, and scrolls to the top.
  Q_INVOKABLE void reset();
  Q_INVOKABLE void goToFirst();
  // Handles a key of a menu; any other key does nothing.
  Q_INVOKABLE void press(int key, int modifiers, const QString& text, bool isAutoRepeat);

 signals:
  void columnChanged();
  void viewChanged();
  // By a key, or by pick().
  void chosen(tessaly::MenuRow* row);
  void closeAsked();

 private:
  using Test = std::function<bool(const MenuRow&)>;

  void adopt();
  int position() const;
  MenuRow* highlighted() const;
  MenuRow* nearest(int from, int step, const Test& test) const;
  void go(int from, int step, const Test& test);
  void goBy(int step);
  void goToLast();
  void goToLetter(const QString& letter);
  void reveal(const QQuickItem& row);

  QPointer<QQuickItem> column_;
  QPointer<QQuickItem> view_;
};

}  // namespace tessaly
