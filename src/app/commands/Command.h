// A command of the program: its title, its keys, and whether it is available. Both the menu and the
// keys trigger it.
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
  QML_UNCREATABLE("Created in C++.")
  Q_PROPERTY(QString title READ title CONSTANT)
  // In the format of a Shortcut, and as a text; both empty without keys.
  Q_PROPERTY(QString shortcut READ shortcut CONSTANT)
  Q_PROPERTY(QString keys READ keys CONSTANT)
  // Whether its keys edit text in a text field.
  Q_PROPERTY(bool editsText READ editsText CONSTANT)
  Q_PROPERTY(bool enabled READ isEnabled NOTIFY enabledChanged)

 public:
  struct Description {
    QString title;
    QKeySequence shortcut;  // empty: none
    std::function<bool()> isAllowed;
    std::function<void()> act;
  };

  explicit Command(Description description, QObject* parent = nullptr);

  const QString& title() const { return description_.title; }
  QString shortcut() const { return description_.shortcut.toString(QKeySequence::PortableText); }
  QString keys() const { return description_.shortcut.toString(QKeySequence::NativeText); }
  bool editsText() const;
  bool isEnabled() const { return isEnabled_; }

  // Updates whether it is available.
  void refresh();
  // Executes it; does nothing while it is disabled.
  Q_INVOKABLE void trigger();

 signals:
  void enabledChanged();

 private:
  Description description_;
  bool isEnabled_ = false;
};

}  // namespace tessaly
