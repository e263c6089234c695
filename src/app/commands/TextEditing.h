// The usual editing commands for the text field that had the keyboard focus before the menu opened.
// Without a field all are disabled. They call the field's own operations.
#pragma once

#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace tessaly {

class TextEditing : public QObject {
  Q_OBJECT
  QML_ELEMENT
  // Any item; one that is not a TextInput or TextEdit counts as none.
  Q_PROPERTY(QQuickItem* target READ target WRITE setTarget NOTIFY changed)
  Q_PROPERTY(bool isField READ isField NOTIFY changed)
  Q_PROPERTY(bool canCut READ canCut NOTIFY changed)
  Q_PROPERTY(bool canCopy READ canCopy NOTIFY changed)
  Q_PROPERTY(bool canPaste READ canPaste NOTIFY changed)
  Q_PROPERTY(bool canSelectAll READ canSelectAll NOTIFY changed)

 public:
  using QObject::QObject;

  QQuickItem* target() const { return target_; }
  // Updates the properties, even if the item is the same.
  void setTarget(QQuickItem* target);

  bool isField() const;
  bool canCut() const;
  bool canCopy() const;
  bool canPaste() const;
  bool canSelectAll() const;

  Q_INVOKABLE void cut();
  Q_INVOKABLE void copy();
  Q_INVOKABLE void paste();
  Q_INVOKABLE void selectAll();

 signals:
  void changed();

 private:
  bool isReadOnly() const;
  void tell(const char* operation);

  QPointer<QQuickItem> target_;
};

}  // namespace tessaly
