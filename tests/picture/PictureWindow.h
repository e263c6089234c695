// The real window on a fake machine, from its disk to its clock, showing one of its screens. After
// pinLook(), a screen has the same picture on every machine at any time; the user's session is not
// reached.
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
    largest,
    largestWide,
    largestOne,
    largestEmpty,
    grew,
    grewWide,
    grewOne,
    grewEmpty,
    safe,
    safeWide,
    safeOne,
    safeEmpty,
    compare,
    compareWide,
    compareOne,
    compareEmpty,
    history,
    historyWide,
    historyOne,
    historyEmpty,
    wins,
    winsWide,
    winsOne,
    winsEmpty,
    winsBanners,
    winsMoving,
    duplicates,
    duplicatesWide,
    duplicatesOne,
    duplicatesOneWide,
    duplicatesEmpty,
    duplicatesEmptyWide,
    duplicatesNoneKept,
    duplicatesComparing,
    duplicatesAwaited,
    clones,
    clonesWide,
    clonesOne,
    clonesOneWide,
    clonesEmpty,
    clonesEmptyWide,
    aliases,
    aliasesWide,
    aliasesOne,
    aliasesOneWide,
    aliasesEmpty,
    aliasesEmptyWide,
    cloud,
    cloudWide,
    cloudOne,
    cloudOneWide,
    cloudEmpty,
    cloudEmptyWide,
    // Lists with one row and without any, on a large display.
    largestOneWide,
    largestEmptyWide,
    grewOneWide,
    grewEmptyWide,
    safeOneWide,
    safeEmptyWide,
    compareOneWide,
    compareEmptyWide,
    historyOneWide,
    historyEmptyWide,
    winsOneWide,
    winsEmptyWide,
    band,
    tileMenu,
    hover,
    heatMap,
    watching,
    smallest,
    twoPixels
  };

  // Screens by their names on the command line, and the names.
  static std::optional<Screen> screenNamed(const QString& name);
  static QStringList names();

  // The pixels per point of the screen's kept picture. The process must be set up for them: see
  // pinLook().
  static int pixelsAPoint(Screen screen);

  // `size` is that of the kept picture by default.
  explicit PictureWindow(Screen screen, std::optional<QSize> size = {});

  QImage picture();

  FixtureWindow& fixture() { return fixture_; }
  // The object names of all visible items.
  QStringList visibleNames();

 private:
  void scan();
  void letMessageGo();
  void scanHalfWay();
  void compareHalfWay();
  void openMenu();
  // Moves the keyboard focus to this row of the list.
  void enterList(int row);
  void scrollSidebarToItsEnd();
  void showWins(Screen screen);
  void showFound(Screen screen);
  void show(Screen screen);

  ScanSession& session() { return fixture_.session(); }

  FakeMachine machine_;
  FixtureWindow fixture_;
};

}  // namespace tessaly
