// One overlay in a window of its own, over a control that stands for everything below. Any
// complaint of the QML engine fails the test.
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

  // `overlay` is the QML of one object, to which the window is `scene`.
  OverlayScene(const QString& overlay, const Setting& setting);
  explicit OverlayScene(const QString& overlay) : OverlayScene(overlay, Setting{}) {}
  ~OverlayScene();

  QQuickView& view() { return *view_; }
  // A property of the scene: clicksBelow, hoveredBelow, turnsBelow, keysBelow, shortcutsBelow,
  // quits, closes and overlayShown.
  QVariant count(const char* name) const;
  void setOverlayShown(bool shown);

  // The one shown item of this name; "a/b" is the b within a. A failure when there is none.
  QQuickItem* find(const QString& path) const;
  bool shows(const QString& name) const;
  // A property by its path, as in "font.pixelSize".
  QVariant read(const QString& path, const QString& property) const;
  // The name of the item that has the keyboard.
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
