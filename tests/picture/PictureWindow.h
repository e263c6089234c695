// The real window over a machine that is made up, from its disk to its clock, brought to one of its
// screens. After pinLook() two pictures of a screen are the same wherever and whenever they are
// taken; nothing of the user's session is reached.
//
// Main thread only, and one at a time.
#pragma once

#include <optional>
#include <string>

#include <QImage>
#include <QSize>
#include <QString>
#include <QStringList>

#include "fixture/FixtureWindow.h"
#include "support/FakeMachine.h"

namespace tessaly {

class PictureWindow {
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
    tileMenu,
    hover,
    heatMap,
    watching,
    smallest,
    twoPixels
  };

  // By their names on the command line, and back.
  static std::optional<Screen> screenNamed(const QString& name);
  static QStringList names();

  // How many pixels a point the screen is kept in. The process must have been made for them: see
  // pinLook().
  static int pixelsAPoint(Screen screen);

  // In the size that the screen is kept in, unless told otherwise.
  explicit PictureWindow(Screen screen, std::optional<QSize> size = {});

  QImage picture();

  FixtureWindow& fixture() { return fixture_; }
  // The object names of all items that are to be seen.
  QStringList visibleNames();

 private:
  void scan();
  void letMessageGo();
  void scanHalfWay();
  void openMenu();
  void scrollSidebarToItsEnd();
  void show(Screen screen);

  ScanSession& session() { return fixture_.session(); }

  FakeMachine machine_;
  FixtureWindow fixture_;
};

}  // namespace tessaly
