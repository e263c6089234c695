// Starts of the built program on a desktop of the test's own: an X server, a message bus, and on it
// a notification area where the test wants one.
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

#include "platform/Process.h"
#include "support/PrivateBus.h"
#include "support/TempTree.h"
#include "support/XServer.h"

namespace tessaly {

class ProgramOnDesktop : public testing::Test {
 protected:
  explicit ProgramOnDesktop(std::string_view home = "notes.txt 2M\n") : home_(home) {}

  void SetUp() override;
  // Ends what has been started and still runs.
  void TearDown() override;

  void startNotificationArea();

  // From now on the program starts without a window.
  void startHidden() const;

  Process& start() { return start(TESSALY_PROGRAM, {}); }
  // Another program, which may start this one in turn.
  Process& start(const std::string& path, std::vector<std::string> args);

  // How a second start ends.
  Process::Exit startAgain();

  // The server has nothing but black where there is no window.
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

  // The process that has a status item.
  pid_t programBehind(const QString& item);

  // Where something of this name stands in the window at its start, learnt from a window without a
  // screen.
  QPoint middleOf(const QString& name) const;

  TempTree home_;
  TempTree state_{"run/ mode=0700\n"};
  XServer server_{QSize(1280, 820)};
  PrivateBus bus_;
  BusObject watcher_;
  int looks_ = 0;      // questions for somebody who draws
  QStringList items_;  // what has registered with the notification area, by its name on the bus
  std::deque<Process> programs_;
};

}  // namespace tessaly
