// The soft shadow that lies centred under a tile, as if the tile were opaque.
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
// Rounding the corners of a tile before the blur would change no pixel by more than one part in
// fifty, so the blur is that of the plain rectangle, which is a product of one factor a column and
// one a row.
class Glow {
 public:
  // The glow of `rect` (points) for canvases of this scale.
  Glow(const Rect& rect, const Color& color, double radius, double scale);

  // How far from the tile a glow of this radius is still seen, in points.
  static double reach(double radius);

  // Lays the glow over the canvas, inside its clip.
  void paint(PixelCanvas& canvas) const;

 private:
  QRect area_;                         // pixels of the canvas
  std::vector<std::uint8_t> columns_;  // strength of each
  std::vector<std::uint8_t> rows_;
  std::array<std::uint32_t, 256> colors_{};  // by strength
  int fullFrom_ = 0;  // the columns of full strength, in pixels of the canvas
  int fullTo_ = 0;
};

}  // namespace tessaly
