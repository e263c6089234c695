// The soft shadow centred under a tile, as if the tile were opaque.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include <QRect>

#include "app/map/PixelCanvas.h"
#include "look/Color.h"
#include "treemap/Rect.h"

namespace tessaly {

// A rectangle in one colour, blurred by a Gaussian with the glow's radius as standard deviation.
// Rounding the corners before the blur would change no pixel by more than 2 %, so a plain rectangle
// is blurred, which is a product of one factor per column and one per row.
class Glow {
 public:
  // The glow of `rect` (points) for a canvas of this scale.
  Glow(const Rect& rect, const Color& color, double radius, double scale);

  // How far from the tile a glow of this radius is visible, in points.
  static double reach(double radius);

  // Draws the glow on the canvas, inside its clip.
  void paint(PixelCanvas& canvas) const;

 private:
  QRect area_;                         // pixels of the canvas
  std::vector<std::uint8_t> columns_;  // strength of each
  std::vector<std::uint8_t> rows_;
  std::array<std::uint32_t, 256> colors_{};  // by strength
  int fullFrom_ = 0;  // the columns with full strength, in pixels of the canvas
  int fullTo_ = 0;
};

}  // namespace tessaly
