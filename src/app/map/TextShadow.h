// The shadow of small text and icons.
#pragma once

#include <QImage>

namespace tessaly::TextShadow {

// How much larger than the text a picture must be on every side for its shadow, in pixels.
int margin(double scale);

// Lays `picture` (premultiplied, with that margin clear on all sides) over its own shadow: black at
// 0.7, blurred by a Gaussian with a deviation of 2 points, moved down by 1 point.
void layUnder(QImage& picture, double scale);

}  // namespace tessaly::TextShadow
