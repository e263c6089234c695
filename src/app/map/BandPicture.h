// The rubber band as pixels: a rounded rectangle, nowhere outside the rounded shape of the canvas.
// All of it that is not one plain colour lies close to its edges, so only these are painted: a band
// over the whole canvas costs little more than a small one. Main thread only.
#pragma once

#include <vector>

#include <QRect>
#include <QSizeF>

#include "app/map/PixelCanvas.h"
#include "look/Color.h"
#include "look/MarrowTheme.h"
#include "treemap/Rect.h"

namespace tessaly {

struct BandPicture {
  static constexpr Color fill = MarrowTheme::accent.atOpacity(0.15);

  // The band `band` on a canvas of `size`, both in points, at `scale` pixels a point.
  static BandPicture of(const Rect& band, QSizeF size, double scale);

  QRect inside;                    // the pixels that are `fill` all over; empty when there are none
  std::vector<PixelCanvas> edges;  // the rest, none over another
};

}  // namespace tessaly
