// One overlay in a window of its own, over a control that represents everything below. Any warning
// of the QML engine fails the test.
#pragma once

#include <memory>

#include <QQuickItem>
#include <QQuickView>
#include <QString>
#include <QVariant>

#include "app/overlays/AccessGateActions.h"

namespace tessaly {

class OverlayScene {
 public:
  struct Setting {
    QSize size = {1280, 820};
    AccessGateActions* actions = nullptr;  // `actions` in the overlay's QML
  };

  // `overlay` is the QML of one object; it sees the window as `scene`.
  OverlayScene(const QString& overlay, const Setting& setting);
  explicit OverlayScene(const QString& overlay) : OverlayScene(overlay, Setting{}) {}
  ~OverlayScene();

  QQuickView& view() { return *view_; }
  // A property of the scene: clicksBelow, hoveredBelow, turnsBelow, keysBelow, shortcutsBelow,
  // quits, closes and overlayShown.
  QVariant count(const char* name) const;
  void setOverlayShown(bool shown);

  // The only visible item with this name; "a/b" is the b inside a. A failure if there is none.
  QQuickItem* find(const QString& path) const;
  bool shows(const QString& name) const;
  // A property by its path, as in "font.pixelSize".
  QVariant read(const QString& path, const QString& property) const;
  // The name of the item with the keyboard focus.
  QString focused() const;
  // The item's bounds in the window.
  QRectF place(const QString& path) const;
  QPoint middle(const QString& path) const;

  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
  void click(const QString& path);
  void clickAt(QPoint point);
  void settle();

 private:
  std::unique_ptr<QQuickView> view_;
};

}  // namespace tessaly
