// The kind of device that last pressed in the window of an item, as an attached property. A view
// scrolls when it is dragged by a finger; a drag by the mouse is left to the item behind, which
// moves the window. The property changes before the press is delivered, so that a view can ignore
// it.
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
  QML_UNCREATABLE("It exists only attached to an item.")
  QML_ATTACHED(tessaly::LastPress)
  // A touch screen instead of a mouse, touchpad or pen. False before the first press.
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
