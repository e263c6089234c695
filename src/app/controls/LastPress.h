// What the window of an item was last pressed with, attached to the item. A view that is pulled by
// a finger scrolls; pulled by the mouse it leaves the pull to what lies behind it, which moves the
// window. It is known before the press is delivered, so that a view can stand aside in time.
#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QQuickWindow>
#include <QtQml/qqml.h>
#include <QtQml/qqmlregistration.h>

namespace tessaly {

class LastPress : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("It is attached to an item.")
  QML_ATTACHED(tessaly::LastPress)
  // A finger on a screen, rather than a mouse, a touchpad or a pen. False before the first press.
  Q_PROPERTY(bool byFinger READ isByFinger NOTIFY byFingerChanged)

 public:
  static LastPress* qmlAttachedProperties(QObject* item) { return new LastPress(item); }

  bool isByFinger() const { return isByFinger_; }

  bool eventFilter(QObject* watched, QEvent* event) override;

 signals:
  void byFingerChanged();

 private:
  explicit LastPress(QObject* item);

  void watch(QQuickWindow* window);
  void take(bool isByFinger);

  QPointer<QQuickWindow> window_;
  bool isByFinger_ = false;
};

}  // namespace tessaly
