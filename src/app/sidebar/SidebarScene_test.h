// The sidebar alone in a window of its own, over a session whose machine is fake: looked into by
// object name, worked by pointer and keyboard. Any complaint of the QML engine fails the test.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <QImage>
#include <QQuickItem>
#include <QQuickView>
#include <QString>
#include <QStringList>
#include <QVariant>

#include "app/sidebar/SidebarState.h"
#include "session/AccessController.h"
#include "session/SessionFixture_test.h"

namespace tessaly {

class SidebarScene : public SessionFixture {
 public:
  // A property of the item at `path`: names with "/" between them, each below the one before.
  QVariant read(const QString& path, const QString& property) const;

 protected:
  // What the session finds when it is made; without a call there is nothing.
  void fill();
  // Puts `volumes` rows into what df prints, with "/" the first, and scans so that it is read.
  void mount(const QStringList& volumes);
  // Leaves settings as an earlier run would, and starts anew.
  void remember(std::string_view key, const std::vector<std::string>& paths);
  // So many items lie in the Trash.
  void fillTrash(int count);

  // Makes the view, `height` points high, and the keyboard's.
  void show(int height = 680);
  QQuickView& view() { return *view_; }
  AccessController& access() { return *access_; }

  // The visible items of this name below `top`, in painting order; those of a popup among them.
  std::vector<QQuickItem*> all(const QString& name, QQuickItem* top = nullptr) const;
  // The one such item; a failure when there is none or more than one.
  QQuickItem* find(const QString& path) const;
  bool shows(const QString& name) const;
  QString text(QQuickItem* top, const QString& name) const;
  // The labels of all rows in the section, top to bottom.
  QStringList labels(const QString& section, const QString& label = "label") const;

  // In the window.
  static QRectF rectOf(QQuickItem* item);
  void settle();
  void click(QQuickItem* item);
  void click(const QString& path) { click(find(path)); }
  void hover(QQuickItem* item);
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
  void wheel(int degrees);
  double scrolled() const { return read("scrollArea", "contentY").toDouble(); }
  QImage picture();
  // Writes what is shown where TESSALY_PICTURES says; nowhere when it says nothing.
  void keepPicture(const char* name);

  bool mayRead_ = false;

 private:
  std::unique_ptr<AccessController> access_;
  std::unique_ptr<SidebarState> actions_;
  std::unique_ptr<QQuickView> view_;
};

}  // namespace tessaly
