#include "app/controls/Scrolling.h"

#include <algorithm>

#include <QVariant>

namespace tessaly {

namespace {

double read(const QQuickItem& view, const char* property) {
  return view.property(property).toDouble();
}

}  // namespace

double Scrolling::placeNear(double y, const Extent& extent) {
  const double last = std::max(0.0, extent.content - extent.view);
  return extent.origin + std::clamp(y - extent.origin, 0.0, last);
}

double Scrolling::distanceOf(double pixels, double angle) {
  return -(pixels != 0 ? pixels : angle / 2);
}

bool Scrolling::moveTo(QQuickItem* view, double y) {
  if (view == nullptr) return false;
  const double place = placeNear(y, {.origin = read(*view, "originY"),
                                     .content = read(*view, "contentHeight"),
                                     .view = view->height()});
  if (place == read(*view, "contentY")) return false;
  view->setProperty("contentY", place);
  return true;
}

void Scrolling::turn(QQuickItem* view, QQuickItem* around, double pixels, double angle) {
  const double distance = distanceOf(pixels, angle);
  for (QQuickItem* const each : {view, around}) {
    if (each != nullptr && moveTo(each, read(*each, "contentY") + distance)) return;
  }
}

}  // namespace tessaly
