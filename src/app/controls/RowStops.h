// Where a scrolled row of buttons may stop, so that no button at the left end is cut to almost
// nothing. Lengths are in points, positions in the row. Pure functions.
#pragma once

#include <vector>

namespace tessaly::RowStops {

struct Span {
  double left = 0;
  double right = 0;
};

// The smallest visible part of a button that is cut at its left: its padding and a few letters.
inline constexpr double leastShown = 40;

// The position of the left end when `x` is wanted: `x`, unless less than leastShown of one of
// `buttons`, which do not overlap, would remain; then the end of that button or, if not `forward`,
// the last position at which enough of it is visible. A narrow button is completely visible or
// hidden.
double stopAt(double x, const std::vector<Span>& buttons, bool forward);

}  // namespace tessaly::RowStops
