// The built program on an X server of its own, with a home folder made for the test. The pixels on
// the screen are compared with the places of the tiles in the layout.
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

#include "journeys/Programs.h"
#include "journeys/ScreenTwin.h"
#include "support/DeadVolume.h"
#include "support/MuteServer.h"
#include "support/Needs.h"
#include "support/TempTree.h"
#include "support/XServer.h"

namespace tessaly {
namespace {

const QSize screenSize(1280, 820);  // that of the window, which the server puts into the corner

// `state` is the folder of the program's own files, outside of the scanned home.
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
  // No bus is needed, and the user's must not be used.
  environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("unix:path=/none"));
  return environment;
}

class Program {
 public:
  // `prepare` runs in the child, between fork and exec.
  Program(const XServer& server, const std::string& home, std::function<void()> prepare = {}) {
    if (prepare) process_.setChildProcessModifier(prepare);
    process_.setProcessEnvironment(environmentFor(server, home, state_.path()));
    process_.setProcessChannelMode(QProcess::ForwardedChannels);
    process_.start(QString::fromStdString(tessalyProgram()), QStringList());
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
    // The label is in the middle of the primary button; left of it is the accent gradient.
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

TEST_F(ProgramTest, the_scanned_home_is_drawn_where_the_layout_puts_it) {
  Program program(server_, home_.path());
  ASSERT_TRUE(showsIdleScreen());
  server_.click(twin_.middleOf(QStringLiteral("idleScanHome")));
  server_.movePointer({1, 1});
  twin_.scan();

  std::vector<TreemapRect> leaves = twin_.tiles();
  std::erase_if(leaves, [](const TreemapRect& rect) { return rect.depth > 0 || rect.nested; });
  ASSERT_EQ(leaves.size(), 5u);
  // The toast for the completed scan appears later, and covers some of them.
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

TEST_F(ProgramTest, a_click_on_a_folder_drills_in) {
  Program program(server_, home_.path());
  ASSERT_TRUE(showsIdleScreen());
  server_.click(twin_.middleOf(QStringLiteral("idleScanHome")));
  // At its position the map appears, and the glow of the tile under it would cover neighbours.
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

TEST_F(ProgramTest, the_window_is_shown_while_a_mounted_volume_does_not_answer) {
  std::optional<Program> program;
  DeadVolume dead;  // destroyed before the program, which cannot end while it waits for it
  program.emplace(server_, home_.path(), [&dead] {
    if (!dead.mountInChild()) _exit(1);
  });
  if (!dead.isMounted())
    GTEST_SKIP() << needs(Need::fuse, "this user can mount no file system here");
  // The program asks the volume, and waits for the answer from here on.
  EXPECT_TRUE(dead.isAskedBy(program->id()));
  EXPECT_TRUE(showsIdleScreen());
  EXPECT_TRUE(program->isRunning());
}

class ProgramWithoutDisplay : public testing::Test {
 protected:
  using Variables = std::vector<std::pair<const char*, std::string>>;

  // Starts the program with these variables and no other ones for a display.
  void expectRefusal(const Variables& variables, const char* line) {
    expectRefusals({variables}, line);
  }
  // All starts run at once, since some wait for seconds.
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
  // Sets the Qt platform to `platform` unless it is empty.
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
    process->start(QString::fromStdString(tessalyProgram()), QStringList());
    return process;
  }

  static constexpr const char* noDisplay = "tessaly: there is no display to open a window on\n";
  TempTree state_{"run/ mode=0700\n"};
};

TEST_F(ProgramWithoutDisplay, a_start_without_a_display_says_so_in_one_line_and_exits_with_2) {
  expectRefusal("", "tessaly: there is no display to open a window on\n");
}

TEST_F(ProgramWithoutDisplay, a_start_on_a_named_platform_without_a_display_says_so_too) {
  expectRefusal("xcb", "tessaly: there is no display to open a window on\n");
  expectRefusal("XCB", "tessaly: there is no display to open a window on\n");
}

TEST_F(ProgramWithoutDisplay, an_unknown_qt_platform_is_reported_in_one_line_with_exit_status_2) {
  for (const char* platform : {"nonsense", "nonsense:size=1x1", "nonsense;more", "two\nlines"})
    expectRefusal(platform, "tessaly: QT_QPA_PLATFORM names no platform of Qt's\n");
}

TEST_F(ProgramWithoutDisplay, a_failing_qt_platform_is_reported_in_one_line_with_exit_status_2) {
  expectRefusal("offscreen:configfile=/none", "tessaly: Qt cannot open a window on this display\n");
  // There is no screen without a framebuffer of that name.
  expectRefusal("linuxfb:fb=/none", "tessaly: Qt cannot open a window on this display\n");
}

TEST_F(ProgramWithoutDisplay, named_display_servers_that_do_not_exist_are_reported) {
  // Xvfb takes the lowest free display number.
  for (const char* display : {":4999", "localhost:4999", "nonsense", ":"}) {
    expectRefusal({{"DISPLAY", display}}, noDisplay);
    expectRefusal({{"DISPLAY", display}, {"QT_QPA_PLATFORM", "xcb"}}, noDisplay);
  }
  expectRefusal({{"WAYLAND_DISPLAY", "wayland-none"}}, noDisplay);
  expectRefusal({{"WAYLAND_DISPLAY", "wayland-none"}, {"XDG_SESSION_TYPE", "wayland"}}, noDisplay);
  expectRefusal({{"WAYLAND_DISPLAY", "wayland-none"}, {"DISPLAY", ":4999"}}, noDisplay);
}

TEST_F(ProgramWithoutDisplay, display_servers_that_never_answer_are_reported) {
  // One start per server, so that each start is known to connect to its own.
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
