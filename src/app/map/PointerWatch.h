// Distinguishes moves of the pointer from tiles that appear under it. Qt sends hover events in both
// cases: with each frame, when a menu above closes, when the window is activated or moved. Here a
// move is an event of the window at another point of both the window and the screen than before.
// Main thread only.
#pragma once

#include <optional>

#include <QObject>
#include <QPointF>
#include <QWindow>

namespace tessaly {

class PointerWatch : public QObject {
  Q_OBJECT

 public:
  // The watch of `window`, which owns it. It watches the pointer from the first call on.
  static PointerWatch& of(QWindow& window);

  // Whether the present event is a move. True once for each move.
  bool takeMove();

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  explicit PointerWatch(QWindow& window);

  struct Position {
    QPointF inWindow;
    QPointF onScreen;
  };
  std::optional<Position> position_;  // the last known position of the pointer
  bool isMoving_ = false;
};

}  // namespace tessaly
