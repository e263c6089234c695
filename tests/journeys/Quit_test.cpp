// Quitting the built program: for the user it ends at once, whatever its threads wait for.
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <optional>
#include <string>
#include <unistd.h>
#include <vector>
#include <xcb/xcb.h>

#include <QDBusConnectionInterface>
#include <QTest>

#include "journeys/ProgramOnDesktop.h"
#include "journeys/Programs.h"
#include "platform/SingleInstance.h"
#include "support/Needs.h"
#include "support/PlainFiles.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;

class QuitTest : public ProgramOnDesktop {
 protected:
  QuitTest() : ProgramOnDesktop("network/\nnotes.txt 2M\n") {}

  static bool holds(const std::function<bool()>& fact) { return QTest::qWaitFor(fact, 60000); }

  // Starts a program that scans, and waits in a folder that does not answer. Returns "", or why
  // nothing can be mounted here.
  std::string startHeld() {
    const QPoint scan = middleOf(QStringLiteral("idleScanHome"));
    Process& holder =
        start(hungFolderProgram(), {home_.at("network"), state_.at("held"), tessalyProgram()});
    const bool isUp = server_.lookUntil(
        [&](const QImage& screen) { return shows(screen) || !isRunning(holder); });
    if (!isUp || !isRunning(holder)) return needs(Need::fuse, "nothing can be mounted here");
    server_.click(scan);
    EXPECT_TRUE(holds([this] { return fs::exists(state_.at("held")); }));
    return "";
  }

  bool isOnBus(const QString& item) {
    return desktop().interface()->isServiceRegistered(item).value();
  }
  QDBusConnection desktop() { return bus_.connection(QStringLiteral("desktop")); }

  // The state of a process that has ended except for a thread in the kernel.
  static char stateOf(pid_t pid) {
    const std::string stat = contentOf("/proc/" + std::to_string(pid) + "/stat");
    const std::size_t name = stat.rfind(')');
    return name == std::string::npos ? '-' : stat[name + 2];
  }

  // Whether the program's hot key is free.
  bool isHotKeyFree() {
    xcb_connection_t* const connection = server_.connection();
    constexpr xcb_keycode_t space = 65;
    const auto asked = xcb_grab_key_checked(connection, 0, server_.root(),
                                            XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_SHIFT, space,
                                            XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    xcb_generic_error_t* const error = xcb_request_check(connection, asked);
    const bool isFree = error == nullptr;
    std::free(error);
    if (isFree)
      xcb_ungrab_key(connection, space, server_.root(), XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_SHIFT);
    xcb_flush(connection);
    return isFree;
  }

  // Like the display server at the end of the session.
  void throwOutPrograms() {
    xcb_connection_t* const connection = server_.connection();
    xcb_query_tree_reply_t* const tree =
        xcb_query_tree_reply(connection, xcb_query_tree(connection, server_.root()), nullptr);
    const xcb_window_t* const windows = xcb_query_tree_children(tree);
    for (int i = 0; i < xcb_query_tree_children_length(tree); ++i)
      xcb_kill_client(connection, windows[i]);
    std::free(tree);
    xcb_flush(connection);
  }

  // Whether a new start on the display of this test would become the only instance.
  bool isLockFree() const {
    for (const auto& entry : fs::directory_iterator(state_.at("run"))) {
      if (entry.path().extension() != ".lock") continue;
      return SingleInstance::claim({state_.at("run"), entry.path().stem()}, 0).has_value();
    }
    return false;
  }
};

TEST_F(QuitTest, quitting_releases_window_and_lock_while_a_thread_hangs_in_a_folder) {
  startNotificationArea();
  if (const std::string refusal = startHeld(); !refusal.empty()) GTEST_SKIP() << refusal;
  ASSERT_TRUE(hasAnswered(1));
  ASSERT_EQ(items_.size(), 1);
  const QString item = items_.front();
  const pid_t first = programBehind(item);
  ASSERT_FALSE(isHotKeyFree());
  ASSERT_FALSE(isLockFree());

  ASSERT_EQ(::kill(first, SIGTERM), 0);
  ASSERT_TRUE(holds([&] { return stateOf(first) == 'Z'; }));
  EXPECT_TRUE(isRunning(programs_.front())) << "nothing hangs";
  EXPECT_TRUE(goesAway());
  EXPECT_TRUE(holds([&] { return !isOnBus(item); }));
  EXPECT_TRUE(isHotKeyFree());

  Process& next = start();
  EXPECT_TRUE(comesUp());
  EXPECT_TRUE(isRunning(next));
  EXPECT_TRUE(hasAnswered(2));
  EXPECT_FALSE(isLockFree());
  EXPECT_EQ(stateOf(first), 'Z');
}

TEST_F(QuitTest, the_close_button_quits_without_a_notification_area) {
  if (const std::string refusal = startHeld(); !refusal.empty()) GTEST_SKIP() << refusal;
  server_.click(middleOf(QStringLiteral("closeWindow")));
  EXPECT_TRUE(goesAway());
  start();
  EXPECT_TRUE(comesUp());
}

TEST_F(QuitTest, the_lock_is_released_when_the_display_is_gone) {
  startNotificationArea();
  if (const std::string refusal = startHeld(); !refusal.empty()) GTEST_SKIP() << refusal;
  ASSERT_TRUE(hasAnswered(1));
  const pid_t first = programBehind(items_.front());
  ASSERT_FALSE(isLockFree());
  throwOutPrograms();
  EXPECT_TRUE(holds([&] { return stateOf(first) == 'Z'; }));
  EXPECT_TRUE(isLockFree());
}

class EndOfProgram : public ProgramOnDesktop, public testing::WithParamInterface<int> {};

TEST_P(EndOfProgram, a_program_told_to_end_exits_with_0) {
  startNotificationArea();
  Process& program = start();
  ASSERT_TRUE(comesUp());
  ASSERT_TRUE(hasAnswered(1));
  ASSERT_EQ(::kill(programBehind(items_.front()), GetParam()), 0);
  ASSERT_TRUE(program.waitUntil(Deadline::after(60)));
  EXPECT_EQ(program.exit(), Process::Exit{});
}

INSTANTIATE_TEST_SUITE_P(BySignal, EndOfProgram, testing::Values(SIGTERM, SIGINT, SIGHUP));

TEST_F(QuitTest, the_next_start_has_a_window_as_soon_as_this_one_is_closed) {
  for (int run = 0; run < 3; ++run) {
    Process& program = start();
    ASSERT_TRUE(comesUp());
    program.terminate();
    ASSERT_TRUE(goesAway());
    Process& next = start();
    ASSERT_TRUE(program.waitUntil(Deadline::after(60)));
    ASSERT_TRUE(comesUp());
    ASSERT_TRUE(isRunning(next));
    next.terminate();
    ASSERT_TRUE(next.waitUntil(Deadline::after(60)));
    ASSERT_TRUE(goesAway());
  }
}

class QuitWhileZipping : public ProgramOnDesktop {
 protected:
  // The zip tool reads this file for longer than any test takes, and it needs no space. A file
  // without any blocks would not be on the map.
  QuitWhileZipping() : ProgramOnDesktop("notes.txt 2M\nfilm.mkv 1M\n") {
    fs::resize_file(home_.at("film.mkv"), std::uintmax_t{256} << 30U);
  }

  static bool holds(const std::function<bool()>& fact) { return QTest::qWaitFor(fact, 60000); }

  std::vector<std::string> stagedArchives() const {
    std::vector<std::string> found;
    for (const std::string& name : entriesOf(home_.path()))
      if (name.starts_with(".tessaly-")) found.push_back(name);
    return found;
  }

  // The processes that zip something in the home.
  std::vector<pid_t> zipping() const {
    std::vector<pid_t> found;
    std::error_code gone;
    for (const auto& process : fs::directory_iterator("/proc", gone)) {
      const fs::path folder = fs::read_symlink(process.path() / "cwd", gone);
      if (folder == home_.path() && contentOf(process.path() / "comm") == "zip\n")
        found.push_back(std::stoi(process.path().filename()));
    }
    return found;
  }
  std::size_t zips() const { return zipping().size(); }

  std::vector<std::string> notes() const {
    std::vector<std::string> found;
    for (const std::string& name : entriesOf(state_.at("Marrow")))
      if (name.starts_with(".tessaly-")) found.push_back(contentOf(state_.at("Marrow/" + name)));
    return found;
  }

  // Starts a program and an archive in it. Returns the process to end.
  Process& startZipping() {
    const QPoint scan = middleOf(QStringLiteral("idleScanHome"));
    Process& program = start();
    EXPECT_TRUE(comesUp());
    server_.click(scan);
    EXPECT_TRUE(holds([this] {
      return contentOf(state_.at("Marrow/settings.json")).find("marrow.recents") !=
             std::string::npos;
    }));
    server_.pressKeys("ctrl+a");
    server_.pressKeys("ctrl+shift+e");
    // Accepts the file name of the panel as soon as it is open.
    EXPECT_TRUE(holds([this] {
      if (zips() == 0) server_.pressKeys("Return");
      return zips() == 1;
    }));
    return program;
  }
};

TEST_F(QuitWhileZipping, quitting_cancels_the_archive_and_leaves_the_items) {
  startNotificationArea();
  Process& program = startZipping();
  ASSERT_TRUE(hasAnswered(1));
  ASSERT_EQ(stagedArchives().size(), 1U);

  ASSERT_EQ(::kill(programBehind(items_.front()), SIGTERM), 0);
  ASSERT_TRUE(program.waitUntil(Deadline::after(60)));
  EXPECT_EQ(program.exit(), Process::Exit{});
  EXPECT_EQ(zips(), 0U);
  EXPECT_THAT(entriesOf(home_.path()), testing::UnorderedElementsAre("notes.txt", "film.mkv"));
}

TEST_F(QuitWhileZipping, files_of_a_killed_program_are_removed_at_the_next_start) {
  Process& program = startZipping();
  ASSERT_EQ(stagedArchives().size(), 1U);
  EXPECT_THAT(notes(), testing::ElementsAre(home_.path()));
  program.kill();
  ASSERT_TRUE(program.waitUntil(Deadline::after(60)));
  // The zip tool is not told, and goes on.
  for (const pid_t zip : zipping()) ::kill(zip, SIGKILL);
  ASSERT_TRUE(holds([this] { return zips() == 0; }));
  ASSERT_EQ(stagedArchives().size(), 1U);
  putFile(state_.at("Marrow/.tessaly-1-1"), "of an earlier run");

  start();
  EXPECT_TRUE(holds([this] { return stagedArchives().empty() && notes().empty(); }));
  EXPECT_THAT(entriesOf(home_.path()), testing::UnorderedElementsAre("notes.txt", "film.mkv"));
}

// The tests below check that the program does not quit.
class LimitedFiles : public ProgramOnDesktop {
 protected:
  LimitedFiles() : ProgramOnDesktop(manyFiles()) {}

  static std::string manyFiles() {
    std::string tree;
    for (int number = 0; number < 60; ++number)
      tree += "file-of-the-number-" + std::to_string(number) + ".mp4 20M\n";
    return tree;
  }
};

TEST_F(LimitedFiles, a_limit_on_file_sizes_does_not_end_the_program) {
  const QPoint scan = middleOf(QStringLiteral("idleScanHome"));
  // In blocks of 512 bytes: enough for the settings, but not for the sizes or the tree.
  Process& program = start("/bin/sh", {"-c", "ulimit -f 4; exec \"$0\"", tessalyProgram()});
  ASSERT_TRUE(comesUp());
  server_.click(scan);
  // Written after the sizes and the tree.
  EXPECT_TRUE(QTest::qWaitFor(
      [&] {
        return !isRunning(program) ||
               contentOf(state_.at("Marrow/settings.json")).find("marrow.recents") !=
                   std::string::npos;
      },
      60000));
  EXPECT_TRUE(isRunning(program));
  for (const std::string& name : entriesOf(state_.at("Marrow"))) {
    EXPECT_FALSE(name.starts_with(".tessaly-")) << name;
    EXPECT_FALSE(name.starts_with("sizes")) << name;
    EXPECT_NE(name, "last-tree.json");
  }
  program.terminate();
  ASSERT_TRUE(program.waitUntil(Deadline::after(60)));
  EXPECT_EQ(program.exit(), Process::Exit{});
}

}  // namespace
}  // namespace tessaly
