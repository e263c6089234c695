// The drag that draws a rubber band: a press that moves at least 8 points. Points are those of the
// canvas. A plain value; what the band selects is decided elsewhere.
#pragma once

#include <optional>

#include <QPointF>

#include "treemap/Rect.h"

namespace tessaly {

class BandGesture {
 public:
  // The distance from which a press is a drag and not a click.
  static constexpr double startDistance = 8;

  // A drag may begin at `point`.
  void press(QPointF point);

  // The pointer has moved to `point` with the button pressed. Returns whether there is a band.
  bool moveTo(QPointF point);

  // The button was released or the drag cancelled: there is no band until the next press.
  void end();

  bool isPressed() const { return pressedAt_.has_value(); }
  bool isDragging() const { return dragStart_.has_value(); }

  // The rectangle between the start and the present point of the drag, while dragging.
  std::optional<Rect> band() const;

 private:
  std::optional<QPointF> pressedAt_;
  std::optional<QPointF> dragStart_;
  std::optional<QPointF> dragCurrent_;
};

}  // namespace tessaly
