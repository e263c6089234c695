// The built program under a Wayland compositor: a test operates its pointer, and checks the screen
// and the disk.
#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <QTest>

#include "journeys/Programs.h"
#include "journeys/ScreenTwin.h"
#include "platform/Process.h"
#include "support/PlainFiles.h"
#include "support/TempTree.h"
#include "support/WaylandCompositor.h"
#include "support/XServer.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;

const QSize screenSize(1280, 820);  // that of the window

class WaylandTest : public testing::Test {
 protected:
  WaylandTest()
      : home_(
            "Films/\n"
            "  long.mp4 40M\n"
            "  short.mp4 20M\n"
            "disk.iso 30M\n"
            "backup.zip 20M\n"
            "paper.pdf 10M\n"),
        twin_(home_.path()) {}

  void SetUp() override {
    program_.emplace(
        std::move(Process::launch({.path = tessalyProgram(),
                                   .environment = {{"DISPLAY", ""},
                                                   {"WAYLAND_DISPLAY", compositor_.display()},
                                                   {"XDG_SESSION_TYPE", "wayland"},
                                                   {"QT_QPA_PLATFORM", ""},
                                                   {"HOME", home_.path()},
                                                   {"XDG_CONFIG_HOME", state_.path()},
                                                   {"XDG_DATA_HOME", state_.path()},
                                                   {"XDG_RUNTIME_DIR", state_.at("run")},
                                                   // No bus is needed, and the user's must not be
                                                   // used.
                                                   {"DBUS_SESSION_BUS_ADDRESS", "unix:path=/none"}},
                                   .error = Process::Stream::sampled}))
            .value());
    ASSERT_TRUE(server_.lookUntil(
        [&](const QImage& screen) { return differs(screen, "idleScanHome") < almostNothing; }));
  }
  void TearDown() override {
    program_->kill();
    program_->waitUntil(Deadline::never());
  }

  // The share of an item that looks different on the screen and in the twin.
  double differs(const QImage& screen, const char* name) {
    return differenceWithin(twin_.placeOf(QLatin1String(name)), screen, twin_.look());
  }
  bool shows(const char* name) {
    return server_.lookUntil(
        [&](const QImage& screen) { return differs(screen, name) < almostNothing; });
  }

  void click(const char* name) {
    server_.click(twin_.middleOf(QLatin1String(name)));
    server_.movePointer(aside_);
  }
  void scan() {
    click("idleScanHome");
    twin_.scan();
    ASSERT_TRUE(showsTiles());
  }

  TreemapRect tile(const std::string& name) {
    const std::vector<TreemapRect> all = twin_.tiles();
    const auto found = std::ranges::find_if(
        all, [&](const TreemapRect& rect) { return rect.node.name() == name; });
    return found != all.end() ? *found : TreemapRect();
  }
  // Above the middle, where the twin's tooltip does not cover it.
  static QPoint inside(const TreemapRect& rect) {
    return QPointF(rect.x + rect.width / 2, rect.y + rect.height / 3).toPoint();
  }

  bool showsTiles() {
    std::vector<TreemapRect> leaves = twin_.tiles();
    std::erase_if(leaves, [](const TreemapRect& rect) { return rect.depth > 0 || rect.nested; });
    // The toast for the completed scan appears later, and covers some of them.
    return !leaves.empty() && server_.lookUntil([&](const QImage& screen) {
      return std::ranges::all_of(leaves, [&](const TreemapRect& rect) {
        return wrongAbout(screen, rect, twin_.grewPaths()).empty();
      });
    });
  }

  static constexpr double almostNothing = 0.02;
  static constexpr double aLot = 0.2;

  TempTree home_;
  TempTree state_{"run/ mode=0700\n"};
  ScreenTwin twin_;
  XServer server_{screenSize + QSize(20, 0)};
  WaylandCompositor compositor_{server_, screenSize};
  const QPoint aside_{1, 1};
  std::optional<Process> program_;
};

TEST_F(WaylandTest, a_scan_is_drawn_and_stored) {
  scan();
  EXPECT_TRUE(
      QTest::qWaitFor([&] { return fs::exists(state_.at("Marrow/last-tree.json")); }, 60000));
  EXPECT_NE(contentOf(state_.at("Marrow/last-tree.json")).find("disk.iso"), std::string::npos);
}

TEST_F(WaylandTest, the_tooltip_describes_the_tile_under_the_pointer) {
  scan();
  const QPoint point = inside(tile("disk.iso"));
  twin_.hover(point);
  ASSERT_GT(differs(server_.look(), "mapTooltip"), aLot);
  server_.movePointer(point);
  EXPECT_TRUE(shows("mapTooltip"));
}

TEST_F(WaylandTest, a_click_on_a_folder_drills_in) {
  scan();
  const TreemapRect films = tile("Films");
  ASSERT_TRUE(films.nested);
  server_.click(QPointF(films.x + films.width / 2, films.y + 10).toPoint());
  server_.movePointer(aside_);
  twin_.drillInto(films.node);
  ASSERT_EQ(twin_.tiles().size(), 2U);
  EXPECT_TRUE(showsTiles());
}

TEST_F(WaylandTest, the_menu_of_a_tile_opens_and_moves_it_to_the_trash) {
  scan();
  const QPoint point = inside(tile("backup.zip"));
  twin_.clickSecondary(point);
  ASSERT_GT(differs(server_.look(), "tileTrash"), almostNothing);
  server_.clickSecondary(point);
  ASSERT_TRUE(shows("tileReveal"));
  ASSERT_TRUE(shows("tileTrash"));
  click("tileTrash");
  // A question comes first.
  twin_.click(QStringLiteral("tileTrash"));
  ASSERT_TRUE(shows("menuTrash"));
  click("menuTrash");
  EXPECT_TRUE(
      QTest::qWaitFor([&] { return fs::exists(state_.at("Trash/files/backup.zip")); }, 60000));
  EXPECT_FALSE(fs::exists(home_.at("backup.zip")));
}

TEST_F(WaylandTest, a_program_told_to_end_exits_with_0) {
  program_->terminate();
  ASSERT_TRUE(program_->waitUntil(Deadline::after(60)));
  EXPECT_EQ(program_->exit(), Process::Exit{});
  EXPECT_EQ(program_->sample(), "");
}

}  // namespace
}  // namespace tessaly
