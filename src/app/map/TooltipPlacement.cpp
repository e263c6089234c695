#include "app/map/TooltipPlacement.h"

#include <algorithm>

namespace tessaly::TooltipPlacement {
namespace {

constexpr double allowedHeight = 118;
constexpr double edge = 8;
constexpr double flippedGap = 12;

double alongAxis(double mouse, double canvas, double extent, double offset) {
  double place = mouse + offset;
  if (place + extent > canvas - edge) place = mouse - extent - flippedGap;
  return std::max(place, edge);
}

}  // namespace

QPointF topLeft(QPointF mouse, QSizeF canvas) {
  return {alongAxis(mouse.x(), canvas.width(), width, 16),
          alongAxis(mouse.y(), canvas.height(), allowedHeight, 18)};
}

}  // namespace tessaly::TooltipPlacement
