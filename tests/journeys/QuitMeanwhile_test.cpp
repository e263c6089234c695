// The end of the built program while another one, or the user, is to answer it, and with the
// session of the desktop.
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

  // Whether it ends long before a question on the bus is given up, which takes 25 seconds.
  static bool endsAtOnce(Process& program) { return program.waitUntil(Deadline::after(20)); }

  // The program with variables that a shell is to set before.
  Process& startWith(const std::string& variables) {
    return start("/bin/sh", {"-c", variables + " exec \"$0\"", TESSALY_PROGRAM});
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

  // As the display does when the session ends.
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

// Nor does it show the folder by other means, as it does where there is no file manager.
TEST_F(QuitMeanwhile, waits_for_no_file_manager) {
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
  // The one file takes all of the map. It is there a moment after the scan.
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

TEST_F(QuitMeanwhile, waits_for_no_user_who_is_to_choose_a_file) {
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

// The order in which a session ends is nobody's: here the bus is gone before the display.
TEST_F(QuitMeanwhile, comes_with_the_end_of_the_display_where_there_is_no_bus) {
  Process& program = startWith("DBUS_SESSION_BUS_ADDRESS=unix:path=/nowhere");
  ASSERT_TRUE(comesUp());
  throwOutPrograms();
  EXPECT_TRUE(endsAtOnce(program));
  EXPECT_EQ(program.exit(), (Process::Exit{.status = EXIT_FAILURE, .signal = 0}));
  EXPECT_TRUE(isLockFree());
}

}  // namespace
}  // namespace tessaly
