// While the menu of a tile is open, all keys go to it.
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

  // Makes every command available.
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

TEST_F(TileMenuKeys, keys_in_the_menu_of_a_tile_reach_no_command) {
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

TEST_F(TileMenuKeys, keys_in_the_menu_of_a_tile_open_no_other_menu) {
  openMenu(tilePoint("notes.txt"));
  press(Qt::Key_F10);
  EXPECT_FALSE(isOpen());
  EXPECT_FALSE(shows("menuQuit"));
}

TEST_F(TileMenuKeys, space_chooses_in_the_menu_of_a_tile_and_previews_nothing) {
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

TEST_F(TileMenuKeys, escape_closes_the_menu_of_a_tile_before_it_collapses_the_queue) {
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

TEST_F(TileMenuKeys, keys_in_the_menu_of_a_tile_do_not_move_the_focus_on_the_map) {
  openMenu(tilePoint("Movies"));
  const std::string before = focused();
  ASSERT_EQ(before, tree_.at("Movies"));
  for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down, Qt::Key_Tab}) {
    press(key);
    EXPECT_EQ(focused(), before);
  }
  EXPECT_TRUE(isOpen());
}

TEST_F(TileMenuKeys, keys_act_on_the_tile_again_once_its_menu_is_closed) {
  openMenu(tilePoint("notes.txt"));
  press(Qt::Key_Backspace, command);
  press(Qt::Key_Escape);
  ASSERT_TRUE(machine_.trash.has(tree_.at("notes.txt")));
  press(Qt::Key_Backspace, command);
  EXPECT_FALSE(machine_.trash.has(tree_.at("notes.txt")));
}

TEST_F(TileMenuKeys, the_pointer_does_not_change_which_tile_the_keys_act_on) {
  openMenu(tilePoint("notes.txt"));
  const QPoint movies = tilePoint("Movies");
  QTest::mouseMove(&window(), movies);
  QTest::mouseMove(&window(), movies + QPoint(3, 0));
  settle(window());
  EXPECT_EQ(focused(), tree_.at("notes.txt"));
}

TEST_F(TileMenuKeys, the_map_gets_the_keys_back_when_a_rescan_closes_the_menu) {
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
