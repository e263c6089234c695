// Quitting the built program while it waits for another program or for the user, and at the end of
// the desktop session.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <xcb/xcb.h>

#include <QTest>

#include "journeys/ProgramOnDesktop.h"
#include "journeys/Programs.h"
#include "platform/SingleInstance.h"
#include "support/PlainFiles.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

class QuitMeanwhile : public ProgramOnDesktop {
 protected:
  struct Free {
    void operator()(void* reply) const { std::free(reply); }
  };
  template <class Reply>
  using Owned = std::unique_ptr<Reply, Free>;

  static bool holds(const std::function<bool()>& fact) { return QTest::qWaitFor(fact, 60000); }

  // Whether it ends long before a call on the bus times out, which takes 25 seconds.
  static bool endsAtOnce(Process& program) { return program.waitUntil(Deadline::after(20)); }

  // Starts the program through a shell that sets variables.
  Process& startWith(const std::string& variables) {
    return start("/bin/sh", {"-c", variables + " exec \"$0\"", tessalyProgram()});
  }

  void scanHome(QPoint button) {
    server_.click(button);
    ASSERT_TRUE(holds([this] {
      return contentOf(state_.at("Marrow/settings.json")).find("marrow.recents") !=
             std::string::npos;
    }));
  }

  template <class Use>
  void forEachWindow(const Use& use) {
    xcb_connection_t* const connection = server_.connection();
    const Owned<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(connection, xcb_query_tree(connection, server_.root()), nullptr));
    const xcb_window_t* const windows = xcb_query_tree_children(tree.get());
    for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) use(windows[i]);
    xcb_flush(connection);
  }

  int windowsInSight() {
    int count = 0;
    forEachWindow([&](xcb_window_t window) {
      const Owned<xcb_get_window_attributes_reply_t> facts(xcb_get_window_attributes_reply(
          server_.connection(), xcb_get_window_attributes(server_.connection(), window), nullptr));
      if (facts && facts->map_state == XCB_MAP_STATE_VIEWABLE) ++count;
    });
    return count;
  }

  // Like the display server at the end of the session.
  void throwOutPrograms() {
    forEachWindow([this](xcb_window_t window) { xcb_kill_client(server_.connection(), window); });
  }

  bool isLockFree() const {
    for (const auto& entry : fs::directory_iterator(state_.at("run"))) {
      if (entry.path().extension() != ".lock") continue;
      return SingleInstance::claim({state_.at("run"), entry.path().stem()}, 0).has_value();
    }
    return false;
  }
};

// Nor may it show the folder in other ways, as it does without a file manager.
TEST_F(QuitMeanwhile, quitting_does_not_wait_for_a_file_manager) {
  BusObject fileManager;
  fileManager.answer = [](const QDBusMessage&, const QDBusConnection&) {};
  QDBusConnection bus = bus_.connection(QStringLiteral("file manager"));
  ASSERT_TRUE(
      bus.registerVirtualObject(QStringLiteral("/org/freedesktop/FileManager1"), &fileManager));
  ASSERT_TRUE(bus.registerService(QStringLiteral("org.freedesktop.FileManager1")));
  const std::string opener = state_.at("bin/xdg-open");
  fs::create_directory(state_.at("bin"));
  std::ofstream(opener) << "#!/bin/sh\n: > '" << state_.at("opened") << "'\n";
  fs::permissions(opener, fs::perms::owner_all);

  const QPoint scan = middleOf(QStringLiteral("idleScanHome"));
  Process& program = startWith("PATH='" + state_.at("bin") + "':\"$PATH\"");
  ASSERT_TRUE(comesUp());
  ASSERT_NO_FATAL_FAILURE(scanHome(scan));
  // The tile of the only file fills the map. It appears shortly after the scan.
  const QPoint tile(740, 500);
  ASSERT_TRUE(holds([&] {
    if (fileManager.calls.empty()) server_.click(tile);
    return !fileManager.calls.empty();
  }));

  program.terminate();
  EXPECT_TRUE(endsAtOnce(program));
  EXPECT_EQ(program.exit(), Process::Exit{});
  EXPECT_TRUE(isLockFree());
  EXPECT_FALSE(fs::exists(state_.at("opened")));
}

TEST_F(QuitMeanwhile, quitting_does_not_wait_for_the_user_to_choose_a_file) {
  const QPoint scan = middleOf(QStringLiteral("idleScanHome"));
  Process& program = start();
  ASSERT_TRUE(comesUp());
  ASSERT_NO_FATAL_FAILURE(scanHome(scan));
  ASSERT_EQ(windowsInSight(), 1);
  server_.pressKeys("ctrl+a");
  server_.pressKeys("ctrl+shift+e");
  ASSERT_TRUE(holds([this] { return windowsInSight() == 2; }));

  program.terminate();
  EXPECT_TRUE(endsAtOnce(program));
  EXPECT_EQ(program.exit(), Process::Exit{});
  EXPECT_TRUE(isLockFree());
  EXPECT_THAT(entriesOf(home_.path()), ElementsAre("notes.txt"));
}

// The parts of a session end in any order: here the bus is gone before the display.
TEST_F(QuitMeanwhile, the_program_quits_with_the_display_if_there_is_no_bus) {
  Process& program = startWith("DBUS_SESSION_BUS_ADDRESS=unix:path=/nowhere");
  ASSERT_TRUE(comesUp());
  throwOutPrograms();
  EXPECT_TRUE(endsAtOnce(program));
  EXPECT_EQ(program.exit(), (Process::Exit{.status = EXIT_FAILURE, .signal = 0}));
  EXPECT_TRUE(isLockFree());
}

}  // namespace
}  // namespace tessaly
