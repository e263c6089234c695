// Starts of the built program on a desktop of the test's own: an X server, a message bus, and a
// notification area if the test wants one.
#pragma once

#include <deque>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <utility>
#include <vector>

#include <QImage>
#include <QPoint>
#include <QString>
#include <QStringList>

#include "journeys/Programs.h"
#include "platform/Process.h"
#include "support/PrivateBus.h"
#include "support/TempTree.h"
#include "support/XServer.h"

namespace tessaly {

class ProgramOnDesktop : public testing::Test {
 protected:
  explicit ProgramOnDesktop(std::string_view home = "notes.txt 2M\n") : home_(home) {}

  void SetUp() override;
  // Ends all started processes.
  void TearDown() override;

  void startNotificationArea();

  // Later starts are hidden.
  void startHidden() const;

  Process& start() { return start(tessalyProgram(), {}); }
  // Another program, which may start the built one.
  Process& start(const std::string& path, std::vector<std::string> args);

  // Starts the program a second time, and returns how that ends.
  Process::Exit startAgain();

  // The screen of the server is black without a window.
  bool comesUp() {
    return server_.lookUntil([](const QImage& screen) { return shows(screen); });
  }
  bool goesAway() {
    return server_.lookUntil([](const QImage& screen) { return !shows(screen); });
  }
  static bool shows(const QImage& screen) {
    return screen.pixel(screen.width() / 2, screen.height() - 40) != qRgb(0, 0, 0);
  }
  bool hasAnswered(int looks);
  static bool isRunning(Process& program) { return !program.waitUntil(Deadline::after(0)); }

  // The process that owns a status item.
  pid_t programBehind(const QString& item);

  // The middle of the item with this object name in the window at its start, taken from an
  // off-screen window.
  QPoint middleOf(const QString& name) const;

  TempTree home_;
  TempTree state_{"run/ mode=0700\n"};
  XServer server_{QSize(1280, 820)};
  PrivateBus bus_;
  BusObject watcher_;
  int looks_ = 0;      // answered queries of the notification area's properties
  QStringList items_;  // names on the bus of the items registered with the notification area
  std::deque<Process> programs_;
};

}  // namespace tessaly
