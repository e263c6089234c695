// The drag that draws a rubber band: a press that moves at least 8 points. Points are those of the
// canvas. Plain values, and no part in what the band selects.
#pragma once

#include <optional>

#include <QPointF>

#include "treemap/Rect.h"

namespace tessaly {

class BandGesture {
 public:
  // The distance from which on a press is no click any more.
  static constexpr double startDistance = 8;

  // A drag may begin at `point`.
  void press(QPointF point);

  // The pointer has come to `point` with its button held. True while there is a band.
  bool moveTo(QPointF point);

  // The button is up, or the drag is given up: there is no band, and none before the next press.
  void end();

  bool isPressed() const { return pressedAt_.has_value(); }
  bool isDragging() const { return dragStart_.has_value(); }

  // The rectangle between where the drag began and where it is, present while dragging.
  std::optional<Rect> band() const;

 private:
  std::optional<QPointF> pressedAt_;
  std::optional<QPointF> dragStart_;
  std::optional<QPointF> dragCurrent_;
};

}  // namespace tessaly
