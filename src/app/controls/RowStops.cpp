#include "app/controls/RowStops.h"

#include <algorithm>

namespace tessaly::RowStops {

double stopAt(double x, const std::vector<Span>& buttons, bool forward) {
  for (const Span& button : buttons) {
    const double lastStop = std::max(button.left, button.right - leastShown);
    if (x > lastStop && x < button.right) return forward ? button.right : lastStop;
  }
  return x;
}

}  // namespace tessaly::RowStops
