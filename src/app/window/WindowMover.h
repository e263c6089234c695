// The area that moves its window: a drag moves it, a double click on the title bar maximises it or
// restores its size. All items that use the pointer are above it.
#pragma once

#include <QPointF>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace tessaly {

class WindowMover : public QQuickItem {
  Q_OBJECT
  QML_ELEMENT
  // The height of the title bar, in points. Below it, a double click counts as two presses.
  Q_PROPERTY(double titleHeight MEMBER titleHeight_ NOTIFY titleHeightChanged)

 public:
  explicit WindowMover(QQuickItem* parent = nullptr);

  // Maximises the window, or restores its size.
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
  QPoint windowStood_;  // the window's position on the screen at the press
};

}  // namespace tessaly
