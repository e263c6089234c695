#include "journeys/ProgramOnDesktop.h"

#include <filesystem>
#include <fstream>

#include <QDBusConnectionInterface>
#include <QDBusVariant>
#include <QTest>

#include "app/Application.h"
#include "fixture/Services.h"
#include "support/WindowItems.h"

namespace tessaly {

namespace {

const QString& watcherName() {
  static const QString name = QStringLiteral("org.kde.StatusNotifierWatcher");
  return name;
}

}  // namespace

void ProgramOnDesktop::SetUp() {
  ASSERT_TRUE(bus_.isRunning()) << "dbus-daemon is needed for this test";
}

void ProgramOnDesktop::TearDown() {
  for (Process& program : programs_) {
    program.terminate();
    program.waitUntil(Deadline::never());
  }
}

void ProgramOnDesktop::startNotificationArea() {
  watcher_.answer = [this](const QDBusMessage& call, const QDBusConnection& bus) {
    if (call.member() == QLatin1String("Get")) {
      bus.send(call.createReply(QVariant::fromValue(QDBusVariant(true))));
      ++looks_;
    } else {
      if (call.member() == QLatin1String("RegisterStatusNotifierItem"))
        items_ << call.arguments().value(0).toString();
      bus.send(call.createReply());
    }
  };
  QDBusConnection desktop = bus_.connection(QStringLiteral("desktop"));
  ASSERT_TRUE(desktop.registerVirtualObject(QStringLiteral("/StatusNotifierWatcher"), &watcher_));
  ASSERT_TRUE(desktop.registerService(watcherName()));
}

void ProgramOnDesktop::startHidden() const {
  std::filesystem::create_directories(state_.at("Marrow"));
  std::ofstream(state_.at("Marrow/settings.json")) << R"({"marrow.startHidden":true})";
}

Process& ProgramOnDesktop::start(const std::string& path, std::vector<std::string> args) {
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
          Process::launch({.path = path, .args = std::move(args), .environment = environment}))
          .value());
  return programs_.back();
}

Process::Exit ProgramOnDesktop::startAgain() {
  Process& program = start();
  program.waitUntil(Deadline::never());
  return program.exit().value();
}

bool ProgramOnDesktop::hasAnswered(int looks) {
  return QTest::qWaitFor([&] { return looks_ >= looks; }, 60000);
}

pid_t ProgramOnDesktop::programBehind(const QString& item) {
  const QDBusConnection desktop = bus_.connection(QStringLiteral("desktop"));
  return static_cast<pid_t>(desktop.interface()->servicePid(item).value());
}

QPoint ProgramOnDesktop::middleOf(const QString& name) const {
  FakeMachine machine;
  Application application(servicesOf(machine, home_.path()));
  application.window().show();
  settle(application.window());
  return tessaly::middleOf(itemNamed(application.window(), name));
}

}  // namespace tessaly
