// The shadow of small text and icons.
#pragma once

#include <QImage>

namespace tessaly::TextShadow {

// The margin in pixels that a picture needs around the text for its shadow.
int margin(double scale);

// Draws the shadow under `picture` (premultiplied, with that transparent margin): black at 0.7,
// blurred by a Gaussian with a deviation of 2 points, moved down by 1 point.
void layUnder(QImage& picture, double scale);

}  // namespace tessaly::TextShadow
