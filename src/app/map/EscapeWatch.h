// Receives Escape in a window before all items, whichever has the keyboard focus, while it is
// wanted. Main thread only.
#pragma once

#include <QObject>
#include <QPointer>
#include <QWindow>

namespace tessaly {

class EscapeWatch : public QObject {
  Q_OBJECT

 public:
  using QObject::QObject;

  // Listens in `window` only from now on; null stops listening.
  void listenIn(QWindow* window);

  bool eventFilter(QObject* watched, QEvent* event) override;

 signals:
  void escaped();

 private:
  QPointer<QWindow> window_;
};

}  // namespace tessaly
