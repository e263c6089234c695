// The rubber band as pixels: a rounded rectangle, clipped to the rounded shape of the canvas. Only
// pixels near its edges differ from its plain fill, and only these are painted: a band over the
// whole canvas costs little more than a small one. Main thread only.
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

  // The band `band` on a canvas of `size`, both in points, at `scale` pixels per point.
  static BandPicture of(const Rect& band, QSizeF size, double scale);

  QRect inside;                    // the pixels with the plain fill; empty if there are none
  std::vector<PixelCanvas> edges;  // the other pixels, without overlaps
};

}  // namespace tessaly
