// A window with one control for tests: created from a line of QML, searched by object name,
// pressed, and photographed. Any warning of the QML engine fails the test.
#pragma once

#include <memory>

#include <QColor>
#include <QImage>
#include <QQuickItem>
#include <QQuickView>
#include <QString>
#include <QVariant>

namespace tessaly {

class ControlScene {
 public:
  // `control` is the QML of one object, placed 40 points from the window's corner.
  explicit ControlScene(const QString& control);
  ~ControlScene();

  QQuickView& view() { return *view_; }
  QQuickItem* control() const;
  // The item of this name in the control; "" is the control.
  QQuickItem* find(const QString& objectName) const;
  // A property by its path, as in "font.pixelSize".
  QVariant read(const QString& objectName, const QString& property) const;

  // Shows the window and activates it.
  void activate();
  QImage picture();
  // The colour at a point in coordinates of the control.
  QColor pixel(double x, double y);
  QPoint center() const;

 private:
  std::unique_ptr<QQuickView> view_;
};

// A colour as text for comparison: "#rrggbb at 0.18", with two digits of opacity.
QString describe(const QColor& color);

}  // namespace tessaly
