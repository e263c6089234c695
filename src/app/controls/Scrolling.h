// Scrolls a column or list vertically, at once and never past its ends. A view is a Flickable;
// lengths are in points, positive downwards. Main thread only.
#pragma once

#include <QObject>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace tessaly {

class Scrolling : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_SINGLETON

 public:
  struct Extent {
    double origin = 0;   // where the content begins
    double content = 0;  // height of the content
    double view = 0;     // height of the visible part
  };

  using QObject::QObject;

  // The position nearest to `y` at which the content fills the view; the beginning if the content
  // is too short for that.
  static double placeNear(double y, const Extent& extent);
  // The distance for a turn of the wheel: its pixels, or half its angle, so that a notch of a mouse
  // wheel is 60 points.
  static double distanceOf(double pixels, double angle);

  // Moves `view` to the position nearest to `y`. False if it is there already.
  Q_INVOKABLE static bool moveTo(QQuickItem* view, double y);
  // Scrolls `view` by a turn of the wheel, or `around` if `view` is at its end; `around` may be
  // null.
  Q_INVOKABLE static void turn(QQuickItem* view, QQuickItem* around, double pixels, double angle);
};

}  // namespace tessaly
