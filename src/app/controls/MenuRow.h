// A row of a menu that can be chosen, used by MenuNavigation. Main thread only.
#pragma once

#include <QQuickItem>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace tessaly {

class MenuRow : public QQuickItem {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged REQUIRED)

 public:
  using QQuickItem::QQuickItem;

  const QString& text() const { return text_; }
  void setText(const QString& text);

  // Chooses the row, by pointer or assistive tools. Does nothing while it is disabled.
  Q_INVOKABLE void pick();

 signals:
  void textChanged();
  // The row was chosen, and its menu has closed.
  void triggered();
  void picked(tessaly::MenuRow* row);

 private:
  QString text_;
};

}  // namespace tessaly
