// Runs the real window, shows the requested screen in it, and writes a picture of that.
#include <cstdio>
#include <functional>

#include <QApplication>
#include <QEventLoop>
#include <QImage>
#include <QMouseEvent>
#include <QTemporaryDir>

#include "app/Application.h"
#include "app/desktop/Display.h"
#include "app/model/DisplayText.h"
#include "fixture/PinnedLook.h"
#include "picture/DrawnScreen.h"
#include "picture/HeldWalk.h"
#include "picture/KeptPictures.h"
#include "picture/PictureOptions.h"
#include "picture/PictureWindow.h"
#include "platform/HomeDirectory.h"
#include "platform/OwnExecutable.h"
#include "support/FakeHotKey.h"
#include "support/FakeLoginItem.h"
#include "support/FakeStatusBarExtra.h"
#include "support/MemorySettings.h"

using namespace tessaly;
using Screen = PictureOptions::Screen;

namespace {

int fail(const char* message) {
  std::fprintf(stderr, "tessaly_picture: %s\n", message);
  return 1;
}

// Runs the event loop until `reached` returns true; it is called after every change of the scan.
void runUntil(ScanSession& session, const std::function<bool()>& reached) {
  QEventLoop loop;
  const auto look = [&] {
    if (reached()) loop.quit();
  };
  QObject::connect(&session.run(), &ScanRun::statusChanged, &loop, look, Qt::QueuedConnection);
  QObject::connect(&session.run(), &ScanRun::scanPercentChanged, &loop, look, Qt::QueuedConnection);
  if (!reached()) loop.exec();
}

bool hasEnded(const ScanSession& session) {
  return session.run().status() != ScanStatus::scanning;
}

bool drillInto(ScanSession& session, const QString& name) {
  const auto current = session.navigation().current();
  if (!current) return false;
  for (const DiskNode& child : current->children()) {
    if (displayText(child.name()) != name) continue;
    session.open(child);
    return true;
  }
  return false;
}

// Updates the scene, whether or not the platform has displayed it yet.
void settle() {
  for (int i = 0; i < 20; ++i) QCoreApplication::processEvents();
}

int write(const QImage& picture, const QString& file) {
  if (picture.isNull() || !picture.save(file)) return fail("the picture cannot be written");
  std::printf("%s: %d x %d\n", qUtf8Printable(file), picture.width(), picture.height());
  return 0;
}

int takePicture(const PictureOptions& options) {
  HeldWalk walk;
  const std::string root = options.root.empty() ? homeDirectory() : options.root;
  const bool fails = options.screen == Screen::failed;
  // The picture neither shows nor changes the user's settings.
  MemorySettings settings;
  // Nor does the desktop know of the program.
  FakeLoginItem loginItem;
  FakeStatusBarExtra statusBar;
  FakeHotKey hotKey;
  const QTemporaryDir support;
  Application application({.platform = platformServices(),
                           .desktop = desktopServices(),
                           .settings = &settings,
                           .loginItem = &loginItem,
                           .statusBar = &statusBar,
                           .hotKey = &hotKey,
                           .homeDirectory = fails ? root + "/nothing here" : root,
                           .supportDirectory = support.path().toStdString(),
                           .walk = std::ref(walk)});
  const HeldWalk::Release releaseAtTheEnd(walk);
  ScanSession& session = application.session();
  QQuickWindow& window = application.window();
  window.setMinimumSize(QSize(1, 1));
  if (options.size) window.resize(*options.size);
  window.show();

  const auto scanToEnd = [&] {
    session.scanHome();
    runUntil(session, [&] { return hasEnded(session); });
  };
  const auto scanHalfWay = [&] {
    walk.holdHalfWay();
    session.scanHome();
    runUntil(session, [&] { return hasEnded(session) || session.run().scanPercent() >= 0.3; });
  };
  switch (options.screen) {
    case Screen::idle:
      break;
    case Screen::failed:
      scanToEnd();
      break;
    case Screen::map:
      scanToEnd();
      // At the first scan of a folder everything counts as grown, and has that colour.
      scanToEnd();
      break;
    case Screen::rescanning:
      scanToEnd();
      scanHalfWay();
      break;
    case Screen::scanning:
      scanHalfWay();
      break;
  }
  if ((options.screen == Screen::scanning || options.screen == Screen::rescanning) &&
      hasEnded(session))
    return fail("the scan was over before it could be seen");
  if (options.screen == Screen::map && session.run().status() != ScanStatus::complete)
    return fail("nothing could be read there");
  for (const QString& name : options.drill)
    if (!drillInto(session, name)) return fail("there is no such folder to drill into");

  settle();
  if (options.hover) {
    const QPointF point(*options.hover);
    QMouseEvent move(QEvent::MouseMove, point, window.mapToGlobal(point), Qt::NoButton,
                     Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&window, &move);
    settle();
  }
  return write(window.grabWindow(), options.file);
}

int takeFixturePicture(const PictureOptions& options) {
  const auto screen = PictureWindow::screenNamed(options.fixture);
  if (!screen) {
    std::fprintf(stderr, "tessaly_picture: there is no screen %s; there are %s\n",
                 qUtf8Printable(options.fixture),
                 qUtf8Printable(PictureWindow::names().join(QStringLiteral(", "))));
    return 2;
  }
  PictureWindow window(*screen, options.size);
  return write(window.picture(), options.file);
}

// Draws all screens, and keeps those that have changed. Deletes pictures without a screen.
int renewKeptPictures(const QString& folder) {
  const KeptPictures kept(folder, "");
  const QStringList names = PictureWindow::names();
  int renewed = 0;
  for (const QString& name : names) {
    const QImage seen = drawnScreen(name, ownExecutable());
    if (seen.isNull()) return fail("a screen cannot be drawn");
    const PictureDifference difference = kept.differenceOf(name, seen, {});
    if (PictureComparison::isSame(difference)) continue;
    if (!kept.keep(name, seen)) return fail("a picture cannot be written");
    std::printf("%s: renewed; %s\n", qUtf8Printable(name),
                PictureComparison::described(difference).c_str());
    ++renewed;
  }
  for (const QString& name : kept.names()) {
    if (names.contains(name)) continue;
    kept.remove(name);
    std::printf("%s: removed\n", qUtf8Printable(name));
  }
  std::printf("%d of %d pictures renewed\n", renewed, static_cast<int>(names.size()));
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  QStringList arguments;
  for (int i = 1; i < argc; ++i) arguments << QString::fromLocal8Bit(argv[i]);
  const auto options = PictureOptions::parse(arguments);
  if (!options) {
    std::fputs(PictureOptions::usage(), stderr);
    return 2;
  }
  const bool isMadeUp = !options->fixture.isEmpty() || !options->keep.isEmpty();
  if (isMadeUp) {
    const auto screen = PictureWindow::screenNamed(options->fixture);
    pinLook(screen ? PictureWindow::pixelsAPoint(*screen) : 1);
  } else if (platformFor(DisplayFacts::ofThisMachine()).empty()) {
    // Without a display the window is drawn off screen.
    qputenv("QT_QPA_PLATFORM", "offscreen");
  }
  if (options->scale != 1) qputenv("QT_SCALE_FACTOR", QByteArray::number(options->scale));
  int count = 1;
  QApplication qtApplication(count, argv);
  Application::setUpLook();
  if (!options->keep.isEmpty()) return renewKeptPictures(options->keep);
  return isMadeUp ? takeFixturePicture(*options) : takePicture(*options);
}
