// The real window over a machine that is made up, from its disk to its clock, brought to one of its
// screens. Two pictures of a screen are the same wherever and whenever they are taken, as far as
// the fonts are.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include <QEvent>
#include <QImage>
#include <QPointF>
#include <QSize>
#include <QString>
#include <QStringList>

#include "app/Application.h"
#include "support/FakeMachine.h"

namespace tessaly {

class FixtureWindow {
 public:
  enum class Screen {
    idle,
    scanning,
    failed,
    map,
    drilled,
    rescanning,
    selected,
    toast,
    failure,
    menu,
    alert,
    gate,
    sidebar,
    sidebarEnd,
    commands,
    queue,
    queueMinimised,
    list,
    band,
    tileMenu
  };

  // By their names on the command line, and back.
  static std::optional<Screen> screenNamed(const QString& name);
  static QStringList names();

  FixtureWindow(Screen screen, QSize size);

  QImage picture();
  // The object names of all items that are to be seen.
  QStringList visibleNames() const;

 private:
  void prepare(Screen screen);
  void scan();
  void letMessagesGo();
  void scanHalfWay();
  void openMenu();
  void scrollSidebarToItsEnd();
  void show(Screen screen);
  // The pointer, in points of the map.
  void point(QEvent::Type type, Qt::MouseButton button, QPointF place);

  FakeMachine machine_;
  std::unique_ptr<Application> application_;
};

}  // namespace tessaly
