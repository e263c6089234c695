// The built program itself, on an X server of its own, over a home folder made for the test. What
// it puts on the screen is compared, pixel by pixel, with where the layout says that the tiles are.
#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

#include <QProcess>

#include "journeys/ScreenTwin.h"
#include "support/DeadVolume.h"
#include "support/MuteServer.h"
#include "support/Needs.h"
#include "support/TempTree.h"
#include "support/XServer.h"

namespace tessaly {
namespace {

const QSize screenSize(1280, 820);  // that of the window, which the server puts at its corner

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
  ScreenTwin twin_;
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
  using Variables = std::vector<std::pair<const char*, std::string>>;

  // A start with these variables, and with no others that tell of a display.
  void expectRefusal(const Variables& variables, const char* line) {
    expectRefusals({variables}, line);
  }
  // Such starts all at once, since some wait for seconds.
  void expectRefusals(const std::vector<Variables>& starts, const char* line) {
    std::vector<std::unique_ptr<QProcess>> processes;
    for (const Variables& variables : starts) processes.push_back(started(variables));
    for (std::size_t index = 0; index < starts.size(); ++index) {
      SCOPED_TRACE(starts[index].empty() ? "" : starts[index].front().second);
      QProcess& process = *processes[index];
      ASSERT_TRUE(process.state() == QProcess::NotRunning || process.waitForFinished(60000));
      EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
      EXPECT_EQ(process.exitCode(), 2);
      EXPECT_EQ(process.readAllStandardError(), QByteArray(line));
      EXPECT_EQ(process.readAllStandardOutput(), QByteArray());
    }
  }
  // With `platform` for Qt where that is not empty.
  void expectRefusal(const char* platform, const char* line) {
    expectRefusal(*platform != 0 ? Variables{{"QT_QPA_PLATFORM", platform}} : Variables(), line);
  }

  std::unique_ptr<QProcess> started(const Variables& variables) const {
    auto process = std::make_unique<QProcess>();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const auto* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "XDG_SESSION_TYPE"})
      environment.remove(QString::fromLatin1(name));
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), QString::fromStdString(state_.at("run")));
    for (const auto& [name, value] : variables)
      environment.insert(QString::fromLatin1(name), QString::fromStdString(value));
    process->setProcessEnvironment(environment);
    process->start(QStringLiteral(TESSALY_PROGRAM), QStringList());
    return process;
  }

  static constexpr const char* noDisplay = "tessaly: there is no display to open a window on\n";
  TempTree state_{"run/ mode=0700\n"};
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

TEST_F(ProgramWithoutDisplay, says_so_where_servers_are_named_that_are_not_there) {
  // Xvfb takes the lowest free number.
  for (const char* display : {":4999", "localhost:4999", "nonsense", ":"}) {
    expectRefusal({{"DISPLAY", display}}, noDisplay);
    expectRefusal({{"DISPLAY", display}, {"QT_QPA_PLATFORM", "xcb"}}, noDisplay);
  }
  expectRefusal({{"WAYLAND_DISPLAY", "wayland-none"}}, noDisplay);
  expectRefusal({{"WAYLAND_DISPLAY", "wayland-none"}, {"XDG_SESSION_TYPE", "wayland"}}, noDisplay);
  expectRefusal({{"WAYLAND_DISPLAY", "wayland-none"}, {"DISPLAY", ":4999"}}, noDisplay);
}

TEST_F(ProgramWithoutDisplay, says_so_where_servers_take_connections_and_say_nothing) {
  // Of each server one start only, so that each start is seen to ask its own.
  const MuteServer byName = MuteServer::at(state_.at("run/mute"));
  const MuteServer byPath = MuteServer::at(state_.at("run/mute-by-path"));
  const MuteServer besideX = MuteServer::at(state_.at("run/mute-beside-x"));
  const MuteServer x = MuteServer::ofX();
  const MuteServer besideWayland = MuteServer::ofX();
  for (const MuteServer* server : {&byName, &byPath, &besideX, &x, &besideWayland})
    ASSERT_TRUE(server->isThere());
  expectRefusals({{{"WAYLAND_DISPLAY", "mute"}},
                  {{"WAYLAND_DISPLAY", byPath.display()}, {"QT_QPA_PLATFORM", "wayland"}},
                  {{"DISPLAY", x.display()}},
                  {{"DISPLAY", besideWayland.display()}, {"WAYLAND_DISPLAY", "mute-beside-x"}}},
                 noDisplay);
  for (const MuteServer* server : {&byName, &byPath, &besideX, &x, &besideWayland})
    EXPECT_TRUE(server->wasAsked()) << server->display();
}

}  // namespace
}  // namespace tessaly
