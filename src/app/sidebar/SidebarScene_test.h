// The sidebar in a window of its own, over a session on a fake machine: searched by object name,
// operated by pointer and keyboard. Any warning of the QML engine fails the test.
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
  // A property of the item at `path`: object names separated by "/", each below the previous one.
  QVariant read(const QString& path, const QString& property) const;

 protected:
  // Gives the session all its content; without this call there is none.
  void fill();
  // Puts `volumes` into the output of df, with "/" first, and scans so that it is read.
  void mount(const QStringList& volumes);
  // Stores settings like an earlier run, and restarts.
  void remember(std::string_view key, const std::vector<std::string>& paths);
  // Sets the number of items in the Trash.
  void fillTrash(int count);

  // Shows the view, `height` points high, with the keyboard focus.
  void show(int height = 680);
  QQuickView& view() { return *view_; }
  AccessController& access() { return *access_; }

  // The visible items with this name below `top`, in painting order, including those in popups.
  std::vector<QQuickItem*> all(const QString& name, QQuickItem* top = nullptr) const;
  // The only such item; a failure if there is none or more than one.
  QQuickItem* find(const QString& path) const;
  bool shows(const QString& name) const;
  QString text(QQuickItem* top, const QString& name) const;
  // The labels of all rows in the section, from top to bottom.
  QStringList labels(const QString& section, const QString& label = "label") const;

  // In coordinates of the window.
  static QRectF rectOf(QQuickItem* item);
  void settle();
  void click(QQuickItem* item);
  void click(const QString& path) { click(find(path)); }
  void hover(QQuickItem* item);
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
  void wheel(int degrees);
  double scrolled() const { return read("scrollArea", "contentY").toDouble(); }
  QImage picture();
  // Writes a picture of the window into the folder TESSALY_PICTURES, if that is set.
  void keepPicture(const char* name);

  bool mayRead_ = false;

 private:
  std::unique_ptr<AccessController> access_;
  std::unique_ptr<SidebarState> actions_;
  std::unique_ptr<QQuickView> view_;
};

}  // namespace tessaly
