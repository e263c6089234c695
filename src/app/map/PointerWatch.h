// Tells a pointer that moves from tiles that come to lie under it. Qt tells items of a hovering
// pointer in both cases: with each frame, when a menu above them closes, when the window itself
// comes forward or is moved. Here a pointer moves when the window is told so, at another point both
// of the window and of the screen than the one known before. Main thread only.
#pragma once

#include <optional>

#include <QObject>
#include <QPointF>
#include <QWindow>

namespace tessaly {

class PointerWatch : public QObject {
  Q_OBJECT

 public:
  // The watch of `window`, which owns it. It knows of the pointer from the first call on.
  static PointerWatch& of(QWindow& window);

  // Whether the event that is being delivered tells of a move. True once for each move.
  bool takeMove();

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  explicit PointerWatch(QWindow& window);

  struct Position {
    QPointF inWindow;
    QPointF onScreen;
  };
  std::optional<Position> position_;  // where the pointer was last known to be
  bool isMoving_ = false;
};

}  // namespace tessaly
