// One entry of the program's menu: what it is called, the keys that stand for it, and whether it
// can be had just now. It answers to the menu and to its keys alike.
#pragma once

#include <functional>

#include <QKeySequence>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace tessaly {

class Command : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("The program makes its commands and hands them to its views.")
  Q_PROPERTY(QString title READ title CONSTANT)
  // As a Shortcut takes it, and as a person reads it; both empty where no keys stand for it.
  Q_PROPERTY(QString shortcut READ shortcut CONSTANT)
  Q_PROPERTY(QString keys READ keys CONSTANT)
  // Its keys edit a text where one is edited.
  Q_PROPERTY(bool editsText READ editsText CONSTANT)
  Q_PROPERTY(bool enabled READ isEnabled NOTIFY enabledChanged)

 public:
  struct Description {
    QString title;
    QKeySequence shortcut;  // empty for none
    std::function<bool()> isAllowed;
    std::function<void()> act;
  };

  explicit Command(Description description, QObject* parent = nullptr);

  const QString& title() const { return description_.title; }
  QString shortcut() const { return description_.shortcut.toString(QKeySequence::PortableText); }
  QString keys() const { return description_.shortcut.toString(QKeySequence::NativeText); }
  bool editsText() const;
  bool isEnabled() const { return isEnabled_; }

  // Asks again whether it can be had.
  void refresh();
  // Does it; nothing happens while it is disabled.
  Q_INVOKABLE void trigger();

 signals:
  void enabledChanged();

 private:
  Description description_;
  bool isEnabled_ = false;
};

}  // namespace tessaly
