// One control in a window of its own, for tests: made from a line of QML, looked into by object
// name, pressed, and photographed. Any complaint of the QML engine fails the test.
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
  // `control` is the QML of one object, which stands 40 points from the window's corner.
  explicit ControlScene(const QString& control);
  ~ControlScene();

  QQuickView& view() { return *view_; }
  // The control itself.
  QQuickItem* control() const;
  // The item of this name in the control; "" is the control.
  QQuickItem* find(const QString& objectName) const;
  // A property by its path, as in "font.pixelSize".
  QVariant read(const QString& objectName, const QString& property) const;

  // Shows the window and makes it the active one.
  void activate();
  QImage picture();
  // The colour at a point of the control.
  QColor pixel(double x, double y);
  QPoint center() const;

 private:
  std::unique_ptr<QQuickView> view_;
};

// Two colours as a test compares them: "#rrggbb at 0.18", the opacity to two digits.
QString describe(const QColor& color);

}  // namespace tessaly
