// The keyboard while the menu of a tile is open: it is the menu's, and nobody else's.
#include <filesystem>
#include <gmock/gmock.h>
#include <iterator>
#include <vector>

#include <QTest>

#include "journeys/CommandKeys.h"
#include "journeys/Journey.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class TileMenuKeys : public Journey {
 protected:
  TileMenuKeys()
      : Journey(
            "Movies/\n"
            "  beach.mp4 6M\n"
            "  rain.mp4 3M\n"
            "notes.txt 2M\n") {
    for (const char* below : {"Movies", "Movies/beach.mp4", "Movies/rain.mp4", "notes.txt"})
      machine_.trash.put(tree_.at(below), below);
    session().scanHome();
    finishScan();
  }

  // Every command has something to act on.
  void makeReady() {
    session().selection().setFocused(session().navigation().current()->children()[1]);
    session().trashFocused();
    finishScan();
    session().open(session().navigation().current()->children()[0]);
    clickHolding(Qt::ShiftModifier, tilePoint("Movies/rain.mp4"));
    ASSERT_THAT(session().removal().lastTrashed(), SizeIs(1));
    ASSERT_THAT(session().navigation().stack(), SizeIs(2));
  }

  void openMenu(QPoint point) {
    hoverAt(point);
    QTest::mouseClick(&window(), Qt::RightButton, Qt::NoModifier, point);
    ASSERT_TRUE(isOpen());
  }
  bool isOpen() { return shows("tileReveal"); }
  std::string focused() {
    return session().selection().focused() ? session().selection().focused()->path()
                                           : std::string();
  }

  void expectNothingDone() {
    EXPECT_TRUE(isOpen());
    EXPECT_TRUE(window().isVisible());
    EXPECT_FALSE(shows("menuQuit"));
    EXPECT_FALSE(shows("settings"));
    EXPECT_FALSE(session().shown().searchOpen());
    EXPECT_FALSE(session().watch().watching());
    EXPECT_THAT(session().cleanupQueue().queue(), IsEmpty());
    EXPECT_THAT(session().selection().selected(), ElementsAre(tree_.at("Movies/rain.mp4")));
    EXPECT_THAT(session().removal().lastTrashed(), SizeIs(1));
    EXPECT_THAT(session().navigation().stack(), SizeIs(2));
    EXPECT_EQ(session().run().status(), ScanStatus::complete);
    EXPECT_THAT(folderPanel_.requests, IsEmpty());
    EXPECT_THAT(machine_.savePanel.requests, IsEmpty());
    EXPECT_THAT(machine_.previewPanel.shown, IsEmpty());
    EXPECT_THAT(workspace_.revealed, IsEmpty());
    EXPECT_FALSE(machine_.pasteboard.text.has_value());
    EXPECT_TRUE(machine_.trash.has(tree_.at("Movies/beach.mp4")));
    EXPECT_EQ(machine_.timesQuit, 0);
  }
};

TEST_F(TileMenuKeys, reach_no_command_of_the_window) {
  makeReady();
  std::vector<Keys> all = {{Qt::Key_Space, Qt::NoModifier},
                           {Qt::Key_Comma, command},
                           {Qt::Key_W, command},
                           {Qt::Key_Q, command}};
  all.insert(all.end(), std::begin(keysOfCommands), std::end(keysOfCommands));
  for (const Keys& keys : all) {
    SCOPED_TRACE(testing::Message() << "key " << keys.key << " with " << int(keys.modifiers));
    openMenu(tilePoint("Movies/beach.mp4"));
    press(keys.key, keys.modifiers);
    expectNothingDone();
    if (HasFailure()) break;
    press(Qt::Key_Escape);
    ASSERT_FALSE(isOpen());
  }
}

TEST_F(TileMenuKeys, open_no_other_menu_in_its_place) {
  openMenu(tilePoint("notes.txt"));
  press(Qt::Key_F10);
  EXPECT_FALSE(isOpen());
  EXPECT_FALSE(shows("menuQuit"));
}

TEST_F(TileMenuKeys, choose_with_space_and_look_into_nothing) {
  tabTo("canvas");
  press(Qt::Key_Menu);
  ASSERT_TRUE(isOpen());
  press(Qt::Key_End);
  press(Qt::Key_Up);
  press(Qt::Key_Up);
  press(Qt::Key_Space);
  EXPECT_FALSE(isOpen());
  EXPECT_THAT(machine_.previewPanel.shown, IsEmpty());
  ASSERT_THAT(session().cleanupQueue().queue(), SizeIs(1));
  EXPECT_EQ(session().cleanupQueue().queue().front().path(), tree_.at("Movies"));
}

TEST_F(TileMenuKeys, put_away_the_menu_before_the_queue) {
  session().cleanupQueue().addToQueue(session().navigation().current()->children()[1]);
  tabTo("canvas");
  press(Qt::Key_Menu);
  press(Qt::Key_Down);
  press(Qt::Key_Escape);
  EXPECT_FALSE(isOpen());
  EXPECT_FALSE(session().cleanupQueue().queueMinimized());
  press(Qt::Key_Escape);
  EXPECT_TRUE(session().cleanupQueue().queueMinimized());
  EXPECT_TRUE(session().cleanupQueue().queueOpen());
}

TEST_F(TileMenuKeys, leave_the_tiles_where_they_are) {
  openMenu(tilePoint("Movies"));
  const std::string before = focused();
  ASSERT_EQ(before, tree_.at("Movies"));
  for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down, Qt::Key_Tab}) {
    press(key);
    EXPECT_EQ(focused(), before);
  }
  EXPECT_TRUE(isOpen());
}

TEST_F(TileMenuKeys, act_on_the_tile_once_more_when_the_menu_is_gone) {
  openMenu(tilePoint("notes.txt"));
  press(Qt::Key_Backspace, command);
  press(Qt::Key_Escape);
  ASSERT_TRUE(machine_.trash.has(tree_.at("notes.txt")));
  press(Qt::Key_Backspace, command);
  EXPECT_FALSE(machine_.trash.has(tree_.at("notes.txt")));
}

TEST_F(TileMenuKeys, are_not_led_elsewhere_by_the_pointer) {
  openMenu(tilePoint("notes.txt"));
  const QPoint movies = tilePoint("Movies");
  QTest::mouseMove(&window(), movies);
  QTest::mouseMove(&window(), movies + QPoint(3, 0));
  settle(window());
  EXPECT_EQ(focused(), tree_.at("notes.txt"));
}

TEST_F(TileMenuKeys, go_back_to_the_map_when_a_rescan_takes_the_menu_away) {
  session().open(session().navigation().current()->children()[0]);
  tabTo("canvas");
  press(Qt::Key_Menu);
  ASSERT_TRUE(isOpen());
  session().rescan();
  finishScan();
  ASSERT_THAT(session().navigation().stack(), SizeIs(1));
  EXPECT_FALSE(isOpen());
  EXPECT_TRUE(item("canvas")->hasActiveFocus());
  press(Qt::Key_L, command);
  EXPECT_THAT(session().cleanupQueue().queue(), SizeIs(1));
  session().cleanupQueue().clearQueue();
  clickAt(tilePoint("notes.txt"));
  EXPECT_THAT(workspace_.revealed, ElementsAre(ElementsAre(tree_.at("notes.txt"))));
}

}  // namespace
}  // namespace tessaly
