// Where a scrolled row of buttons may stand still: where no button is cut to next to nothing at the
// left end of what is seen. Lengths are in points, places those of the row. Pure.
#pragma once

#include <vector>

namespace tessaly::RowStops {

struct Span {
  double left = 0;
  double right = 0;
};

// The least that is shown of a button that is cut at its left: its padding and a few letters.
inline constexpr double leastShown = 40;

// Where the left end of what is seen stands that is wanted at `x`: there, unless it would leave
// less than the least of one of `buttons`, which do not overlap; then at the end of that button,
// or, not `forward`, as far before it as the least takes. A narrow button is shown whole or not at
// all.
double stopAt(double x, const std::vector<Span>& buttons, bool forward);

}  // namespace tessaly::RowStops
