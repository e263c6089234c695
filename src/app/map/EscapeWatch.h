// Hears Escape in a window before anything else there does, whatever has the keyboard, for as long
// as it is asked to. Main thread only.
#pragma once

#include <QObject>
#include <QPointer>
#include <QWindow>

namespace tessaly {

class EscapeWatch : public QObject {
  Q_OBJECT

 public:
  using QObject::QObject;

  // Listens in `window` alone from now on; nowhere for null.
  void listenIn(QWindow* window);

  bool eventFilter(QObject* watched, QEvent* event) override;

 signals:
  void escaped();

 private:
  QPointer<QWindow> window_;
};

}  // namespace tessaly
