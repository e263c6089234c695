#include "app/map/TooltipPlacement.h"

#include <algorithm>

namespace tessaly::TooltipPlacement {
namespace {

constexpr double allowedHeight = 118;
constexpr double edge = 8;
constexpr double flippedGap = 12;

struct Extent {
  double allowed;
  double real;
};

double alongAxis(double mouse, double canvas, Extent extent, double offset) {
  double place = mouse + offset;
  if (place + extent.allowed > canvas - edge) place = mouse - extent.allowed - flippedGap;
  place = std::min(place, canvas - edge - extent.real);
  return std::max(place, edge);
}

}  // namespace

QPointF topLeft(QPointF mouse, QSizeF canvas, double height) {
  return {alongAxis(mouse.x(), canvas.width(), {width, width}, 16),
          alongAxis(mouse.y(), canvas.height(), {allowedHeight, height}, 18)};
}

}  // namespace tessaly::TooltipPlacement
