// The part of a window that moves it: pulled, it takes the window along; clicked twice on the title
// bar, it makes the window as large as the screen, and back. It lies behind everything that has a
// use of its own for the pointer.
#pragma once

#include <QPointF>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace tessaly {

class WindowMover : public QQuickItem {
  Q_OBJECT
  QML_ELEMENT
  // How far down from its top the title bar reaches, in points. Below, a double click is two
  // presses.
  Q_PROPERTY(double titleHeight MEMBER titleHeight_ NOTIFY titleHeightChanged)

 public:
  explicit WindowMover(QQuickItem* parent = nullptr);

  // As large as the screen, or as it was before.
  Q_INVOKABLE void zoom();

 signals:
  void titleHeightChanged();

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseUngrabEvent() override;

 private:
  enum class Pull { none, pressed, moving };

  double titleHeight_ = 0;
  Pull pull_ = Pull::none;
  QPointF pressedAt_;   // on the screen
  QPoint windowStood_;  // its place on the screen at the press
};

}  // namespace tessaly
