// Starts of the built program, on an X server of its own and with a notification area of its own.
#include <deque>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include <QDBusVariant>
#include <QTest>

#include "platform/Process.h"
#include "support/PrivateBus.h"
#include "support/TempTree.h"
#include "support/XServer.h"

namespace tessaly {
namespace {

const QString watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");

class InstanceTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(bus_.isRunning()) << "dbus-daemon is needed for this test"; }
  void TearDown() override {
    for (Process& program : programs_) {
      program.terminate();
      program.waitUntil(Deadline::never());
    }
  }

  void startNotificationArea() {
    watcher_.answer = [this](const QDBusMessage& call, const QDBusConnection& bus) {
      if (call.member() == QLatin1String("Get")) {
        bus.send(call.createReply(QVariant::fromValue(QDBusVariant(true))));
        ++looks_;
      } else {
        bus.send(call.createReply());
      }
    };
    QDBusConnection desktop = bus_.connection(QStringLiteral("desktop"));
    ASSERT_TRUE(desktop.registerVirtualObject(watcherPath, &watcher_));
    ASSERT_TRUE(desktop.registerService(watcherName));
  }

  void startHidden() {
    std::filesystem::create_directories(state_.at("Marrow"));
    std::ofstream(state_.at("Marrow/settings.json")) << R"({"marrow.startHidden":true})";
  }

  Process& start() {
    std::vector<std::pair<std::string, std::string>> environment = {
        {"DISPLAY", server_.display().toStdString()},
        {"WAYLAND_DISPLAY", ""},
        {"XDG_SESSION_TYPE", "x11"},
        {"QT_QPA_PLATFORM", "xcb"},
        {"QT_QUICK_BACKEND", "software"},
        {"HOME", home_.path()},
        {"DBUS_SESSION_BUS_ADDRESS", bus_.address().toStdString()}};
    for (const char* name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME"})
      environment.emplace_back(name, state_.path());
    environment.emplace_back("XDG_RUNTIME_DIR", state_.at("run"));
    programs_.push_back(
        std::move(
            Process::launch({.path = TESSALY_PROGRAM, .args = {}, .environment = environment}))
            .value());
    return programs_.back();
  }

  // How a second start ends.
  Process::Exit startAgain() {
    Process& program = start();
    program.waitUntil(Deadline::never());
    return program.exit().value();
  }

  // The server has nothing but black where there is no window.
  bool comesUp() {
    return server_.lookUntil([](const QImage& screen) { return shows(screen); });
  }
  static bool shows(const QImage& screen) {
    return screen.pixel(screen.width() / 2, screen.height() - 40) != qRgb(0, 0, 0);
  }
  bool hasAnswered(int looks) {
    return QTest::qWaitFor([&] { return looks_ >= looks; }, 60000);
  }
  static bool isRunning(Process& program) { return !program.waitUntil(Deadline::after(0)); }

  TempTree home_{"notes.txt 2M\n"};
  TempTree state_{"run/ mode=0700\n"};
  XServer server_{QSize(1280, 820)};
  PrivateBus bus_;
  BusObject watcher_;
  int looks_ = 0;  // questions for somebody who draws
  std::deque<Process> programs_;
};

TEST_F(InstanceTest, a_second_start_ends_well_and_leaves_the_first_one_running) {
  Process& first = start();
  ASSERT_TRUE(comesUp());
  EXPECT_EQ(startAgain(), Process::Exit{});
  EXPECT_TRUE(isRunning(first));
}

TEST_F(InstanceTest, a_second_start_brings_up_the_window_of_a_hidden_one) {
  startHidden();
  startNotificationArea();
  Process& first = start();
  ASSERT_TRUE(hasAnswered(1));
  EXPECT_FALSE(shows(server_.look()));
  EXPECT_EQ(startAgain(), Process::Exit{});
  EXPECT_TRUE(comesUp());
  EXPECT_TRUE(isRunning(first));
}

TEST_F(InstanceTest, a_hidden_start_shows_its_window_where_there_is_no_notification_area) {
  startHidden();
  start();
  EXPECT_TRUE(comesUp());
}

TEST_F(InstanceTest, the_hot_key_brings_up_the_window) {
  startHidden();
  startNotificationArea();
  start();
  ASSERT_TRUE(hasAnswered(1));
  server_.pressKeys("ctrl+shift+space");
  EXPECT_TRUE(comesUp());
}

TEST_F(InstanceTest, a_start_after_one_that_was_killed_has_a_window) {
  Process& first = start();
  ASSERT_TRUE(comesUp());
  first.terminate();
  first.waitUntil(Deadline::never());
  ASSERT_TRUE(server_.lookUntil([](const QImage& screen) { return !shows(screen); }));
  start();
  EXPECT_TRUE(comesUp());
}

}  // namespace
}  // namespace tessaly
