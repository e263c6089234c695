// The built program itself, on an X server of its own, over a home folder made for the test. What
// it puts on the screen is compared, pixel by pixel, with where the layout says that the tiles are.
#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <optional>
#include <set>
#include <string>
#include <unistd.h>
#include <utility>

#include <QProcess>

#include "app/Application.h"
#include "journeys/Seams.h"
#include "look/MarrowTheme.h"
#include "support/DeadVolume.h"
#include "support/Needs.h"
#include "support/TempTree.h"
#include "support/WindowItems.h"
#include "support/XServer.h"
#include "treemap/NodeTint.h"
#include "treemap/TreemapLayout.h"

namespace tessaly {
namespace {

const QSize screenSize(1280, 820);  // that of the window, which the server puts at its corner

// A window without a screen over the same folder, to learn where things stand in it.
class Twin {
 public:
  explicit Twin(const std::string& home) : application_(seamsOf(machine_, home)) {
    application_.window().show();
    settle(application_.window());
  }

  QPoint middleOf(const QString& name) {
    return tessaly::middleOf(itemNamed(application_.window(), name));
  }

  void scan() {
    application_.session().scanHome();
    machine_.dispatch.drainAll();
    settle(application_.window());
  }

  void drillInto(const DiskNode& node) {
    application_.session().open(node);
    settle(application_.window());
  }

  const std::set<std::string>& grewPaths() { return application_.session().grewPaths(); }

  // The tiles on the map, in the window.
  std::vector<TreemapRect> tiles() {
    QQuickItem* canvas = itemNamed(application_.window(), QStringLiteral("canvas"));
    const QPointF corner = canvas->mapToScene(QPointF(0, 0));
    auto rects = TreemapLayout::layout(*application_.session().current(),
                                       {0, 0, canvas->width(), canvas->height()});
    for (auto& rect : rects) {
      rect.x += corner.x();
      rect.y += corner.y();
    }
    return rects;
  }

 private:
  FakeMachine machine_;
  Application application_;
};

// `state` is where the program keeps what it remembers, outside of the home that is scanned.
QProcessEnvironment environmentFor(const XServer& server, const std::string& home,
                                   const std::string& state) {
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  for (const auto* name : {"QT_QPA_PLATFORM", "QT_QUICK_BACKEND", "QSG_RHI_BACKEND",
                           "QT_SCALE_FACTOR", "WAYLAND_DISPLAY", "XDG_SESSION_TYPE"})
    environment.remove(QString::fromLatin1(name));
  environment.insert(QStringLiteral("DISPLAY"), server.display());
  environment.insert(QStringLiteral("HOME"), QString::fromStdString(home));
  for (const auto* name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME"})
    environment.insert(QString::fromLatin1(name), QString::fromStdString(state));
  environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), QString::fromStdString(state + "/run"));
  // No bus is needed, and none of the user's is to be touched.
  environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("unix:path=/none"));
  return environment;
}

class Program {
 public:
  // `prepare` runs in the child, and may do what can be done between fork and exec.
  Program(const XServer& server, const std::string& home, std::function<void()> prepare = {}) {
    if (prepare) process_.setChildProcessModifier(std::move(prepare));
    process_.setProcessEnvironment(environmentFor(server, home, state_.path()));
    process_.setProcessChannelMode(QProcess::ForwardedChannels);
    process_.start(QStringLiteral(TESSALY_PROGRAM), QStringList());
    EXPECT_TRUE(process_.waitForStarted());
  }
  ~Program() {
    process_.kill();
    process_.waitForFinished();
  }
  bool isRunning() const { return process_.state() == QProcess::Running; }
  pid_t id() const { return static_cast<pid_t>(process_.processId()); }

 private:
  TempTree state_{"run/ mode=0700\n"};
  QProcess process_;
};

int distance(QRgb a, QRgb b) {
  return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                   std::abs(qBlue(a) - qBlue(b))});
}

QRgb over(const Color& below, const Color& above, double opacity) {
  const auto mix = [opacity](int under, int upper) {
    return qRound(under * (1 - opacity) + upper * opacity);
  };
  return qRgb(mix(below.red, above.red), mix(below.green, above.green),
              mix(below.blue, above.blue));
}

QRgb background() {
  return over(MarrowTheme::bg, MarrowTheme::bg, 1);
}

// Whether `pixel` is the fill of a tile of colour `tint` on the bare canvas, at any place of its
// gradient from opacity 0.92 to 0.7.
bool isFillOf(QRgb pixel, const Color& tint) {
  const QRgb strong = over(MarrowTheme::bg, tint, 0.92);
  const QRgb faint = over(MarrowTheme::bg, tint, 0.7);
  const auto within = [](int value, int a, int b) {
    return value >= std::min(a, b) - 3 && value <= std::max(a, b) + 3;
  };
  return within(qRed(pixel), qRed(strong), qRed(faint)) &&
         within(qGreen(pixel), qGreen(strong), qGreen(faint)) &&
         within(qBlue(pixel), qBlue(strong), qBlue(faint));
}

QRgb at(const QImage& screen, double x, double y) {
  return screen.pixel(static_cast<int>(x), static_cast<int>(y));
}

// What is wrong with how a tile without tiles inside stands on the screen; empty when nothing is.
// Looked at below the middle, where there is neither label nor sheen.
std::string wrongAbout(const QImage& screen, const TreemapRect& rect,
                       const std::set<std::string>& grewPaths) {
  const Color tint = NodeTint::color(rect.node, BloatFilter::catalog(), grewPaths, false);
  const double middle = rect.x + rect.width / 2;
  const double low = rect.y + rect.height * 0.75;
  const double right = rect.x + rect.width;
  const double bottom = rect.y + rect.height;
  // Three points inside an edge it is fill. Gaps are two points wide, so that one point beyond the
  // edge lies in a pixel that is all gap; outlines reach half a point into it at opacity 0.4, which
  // takes it a fifth of the way to the fill at most. The faintest fill is 70 away.
  if (!isFillOf(at(screen, middle, low), tint)) return "middle";
  if (!isFillOf(at(screen, rect.x + 3, low), tint)) return "inside the left edge";
  if (!isFillOf(at(screen, right - 3, low), tint)) return "inside the right edge";
  if (!isFillOf(at(screen, middle, bottom - 3), tint)) return "inside the bottom edge";
  if (distance(at(screen, rect.x - 1, low), background()) > 55) return "left of it";
  if (distance(at(screen, right + 1, low), background()) > 55) return "right of it";
  if (distance(at(screen, middle, bottom + 1), background()) > 55) return "below it";
  if (distance(at(screen, middle, rect.y - 1), background()) > 55) return "above it";
  return "";
}

class ProgramTest : public testing::Test {
 protected:
  ProgramTest()
      : home_(
            "Films/\n"
            "  long.mp4 40M\n"
            "  short.mp4 20M\n"
            "disk.iso 30M\n"
            "backup.zip 20M\n"
            "paper.pdf 10M\n"
            "photo.jpg 5M\n"
            "song.bin 5M\n"),
        twin_(home_.path()),
        server_(screenSize) {}

  bool showsIdleScreen() {
    // The middle of the primary button is its label; its left part is the gradient of the accent.
    const QPoint point = twin_.middleOf(QStringLiteral("idleScanHome")) - QPoint(90, 0);
    return server_.lookUntil([&](const QImage& screen) {
      const QRgb pixel = screen.pixel(point);
      return qBlue(pixel) > 150 && qRed(pixel) < 40;
    });
  }

  TempTree home_;
  Twin twin_;
  XServer server_;
};

TEST_F(ProgramTest, draws_the_scanned_home_folder_where_the_layout_puts_it) {
  Program program(server_, home_.path());
  ASSERT_TRUE(showsIdleScreen());
  server_.click(twin_.middleOf(QStringLiteral("idleScanHome")));
  server_.movePointer({1, 1});
  twin_.scan();

  std::vector<TreemapRect> leaves = twin_.tiles();
  std::erase_if(leaves, [](const TreemapRect& rect) { return rect.depth > 0 || rect.nested; });
  ASSERT_EQ(leaves.size(), 5u);
  // The message that the scan is complete comes later, and lies over some of them.
  QImage screen;
  EXPECT_TRUE(server_.lookUntil([&](const QImage& seen) {
    screen = seen;
    return std::all_of(leaves.begin(), leaves.end(), [&](const TreemapRect& rect) {
      return wrongAbout(screen, rect, twin_.grewPaths()).empty();
    });
  }));
  for (const auto& rect : leaves)
    EXPECT_EQ(wrongAbout(screen, rect, twin_.grewPaths()), "") << rect.node.path();
  EXPECT_TRUE(program.isRunning());
}

TEST_F(ProgramTest, drills_into_a_folder_that_is_clicked) {
  Program program(server_, home_.path());
  ASSERT_TRUE(showsIdleScreen());
  server_.click(twin_.middleOf(QStringLiteral("idleScanHome")));
  // Where it stands the map comes up, and the glow of the tile under it reaches its neighbours.
  server_.movePointer({1, 1});
  twin_.scan();
  const std::vector<TreemapRect> top = twin_.tiles();
  const auto films = std::find_if(
      top.begin(), top.end(), [](const TreemapRect& rect) { return rect.node.name() == "Films"; });
  ASSERT_NE(films, top.end());
  ASSERT_TRUE(films->nested);
  const auto disk = std::find_if(top.begin(), top.end(), [](const TreemapRect& rect) {
    return rect.node.name() == "disk.iso";
  });
  ASSERT_TRUE(server_.lookUntil(
      [&](const QImage& screen) { return wrongAbout(screen, *disk, twin_.grewPaths()).empty(); }));

  server_.click(QPointF(films->x + films->width / 2, films->y + 10).toPoint());
  server_.movePointer({1, 1});
  twin_.drillInto(films->node);
  const std::vector<TreemapRect> inside = twin_.tiles();
  ASSERT_EQ(inside.size(), 2u);
  EXPECT_TRUE(server_.lookUntil([&](const QImage& screen) {
    return std::all_of(inside.begin(), inside.end(), [&](const TreemapRect& rect) {
      return wrongAbout(screen, rect, twin_.grewPaths()).empty();
    });
  }));
}

TEST_F(ProgramTest, comes_up_while_a_mounted_volume_does_not_answer) {
  std::optional<Program> program;
  DeadVolume dead;  // goes before the program, which cannot end while it waits
  program.emplace(server_, home_.path(), [&dead] {
    if (!dead.mountInChild()) _exit(1);
  });
  if (!dead.isMounted())
    GTEST_SKIP() << needs(Need::fuse, "this user can mount no file system here");
  // It asks the volume itself, and goes on waiting for it from here on.
  EXPECT_TRUE(dead.isAskedBy(program->id()));
  EXPECT_TRUE(showsIdleScreen());
  EXPECT_TRUE(program->isRunning());
}

class ProgramWithoutDisplay : public testing::Test {
 protected:
  // A start on no display of the machine, but with `platform` for Qt where that is not empty.
  static void expectRefusal(const char* platform, const char* line) {
    SCOPED_TRACE(platform);
    const TempTree state("run/ mode=0700\n");
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const auto* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
      environment.remove(QString::fromLatin1(name));
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), QString::fromStdString(state.at("run")));
    if (*platform != 0)
      environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QString::fromLatin1(platform));
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(TESSALY_PROGRAM), QStringList());
    ASSERT_TRUE(process.waitForFinished());
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 2);
    EXPECT_EQ(process.readAllStandardError(), QByteArray(line));
    EXPECT_EQ(process.readAllStandardOutput(), QByteArray());
  }
};

TEST_F(ProgramWithoutDisplay, says_so_in_one_line_and_gives_2) {
  expectRefusal("", "tessaly: there is no display to open a window on\n");
}

TEST_F(ProgramWithoutDisplay, says_so_too_where_it_was_requested_by_name) {
  expectRefusal("xcb", "tessaly: there is no display to open a window on\n");
  expectRefusal("XCB", "tessaly: there is no display to open a window on\n");
}

TEST_F(ProgramWithoutDisplay, says_in_one_line_that_qt_knows_no_such_platform_and_gives_2) {
  for (const char* platform : {"nonsense", "nonsense:size=1x1", "nonsense;more", "two\nlines"})
    expectRefusal(platform, "tessaly: QT_QPA_PLATFORM names no platform of Qt's\n");
}

TEST_F(ProgramWithoutDisplay, says_in_one_line_that_a_platform_does_not_start_and_gives_2) {
  expectRefusal("offscreen:configfile=/none", "tessaly: Qt cannot open a window on this display\n");
  // Has no screen where no framebuffer is of that name.
  expectRefusal("linuxfb:fb=/none", "tessaly: Qt cannot open a window on this display\n");
}

}  // namespace
}  // namespace tessaly
