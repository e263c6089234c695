// Moves a column or list that scrolls down, at once and never past its ends. A view is a Flickable;
// lengths are in points, down is positive. Main thread only.
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
    double view = 0;     // height of what is in sight
  };

  using QObject::QObject;

  // The place nearest to `y` at which the content fills the view, or at which it begins where it is
  // too short for that.
  static double placeNear(double y, const Extent& extent);
  // How far a turn of the wheel moves: by its pixels, or by half its angle, so that a notch of a
  // mouse is 60 points.
  static double distanceOf(double pixels, double angle);

  // Moves `view` to the place nearest to `y`. False where it stands there already.
  Q_INVOKABLE static bool moveTo(QQuickItem* view, double y);
  // Moves `view` by a turn of the wheel, or, where it is at its end, `around`, which may be null.
  Q_INVOKABLE static void turn(QQuickItem* view, QQuickItem* around, double pixels, double angle);
};

}  // namespace tessaly
