// The map by keyboard alone.
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "journeys/Journey.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

class CanvasKeyboard : public Journey {
 protected:
  CanvasKeyboard()
      : Journey(
            "Movies/\n"
            "  old/\n"
            "    beach.mp4 6M\n"
            "    rain.mp4 1M\n"
            "  new.mp4 2M\n"
            "notes.txt 3M\n") {
    session().scanHome();
    finishScan();
    tabTo("canvas");
  }

  std::string focused() {
    return session().focused() ? session().focused()->path() : std::string();
  }
  bool hasKeyboard() { return item("canvas")->hasActiveFocus(); }
};

TEST_F(CanvasKeyboard, goes_into_a_folder_and_out_again) {
  EXPECT_EQ(focused(), tree_.at("Movies"));
  press(Qt::Key_Return);
  ASSERT_EQ(session().stack().size(), 2U);
  EXPECT_TRUE(hasKeyboard());
  EXPECT_EQ(focused(), tree_.at("Movies/old"));

  press(Qt::Key_Return);
  ASSERT_EQ(session().stack().size(), 3U);
  EXPECT_EQ(focused(), tree_.at("Movies/old/beach.mp4"));

  press(Qt::Key_Escape);
  ASSERT_EQ(session().stack().size(), 2U);
  EXPECT_TRUE(hasKeyboard());
  press(Qt::Key_Escape);
  ASSERT_EQ(session().stack().size(), 1U);
  EXPECT_TRUE(hasKeyboard());
  press(Qt::Key_Escape);
  EXPECT_EQ(session().stack().size(), 1U);
}

TEST_F(CanvasKeyboard, puts_the_queue_away_before_it_goes_back) {
  press(Qt::Key_Return);
  press(Qt::Key_Return, Qt::ControlModifier);
  ASSERT_TRUE(session().queueOpen());
  press(Qt::Key_Escape);
  EXPECT_FALSE(session().queueOpen());
  EXPECT_EQ(session().stack().size(), 2U);
  press(Qt::Key_Escape);
  EXPECT_EQ(session().stack().size(), 1U);
}

TEST_F(CanvasKeyboard, acts_on_the_tile_it_is_on_with_the_commands) {
  press(Qt::Key_Right);
  ASSERT_EQ(focused(), tree_.at("notes.txt"));
  press(Qt::Key_L, Qt::ControlModifier);
  ASSERT_EQ(session().queue().size(), 1U);
  EXPECT_EQ(session().queue()[0].path(), tree_.at("notes.txt"));
  press(Qt::Key_Space);
  EXPECT_EQ(machine_.previewPanel.shown.size(), 1U);
}

TEST_F(CanvasKeyboard, opens_the_menu_of_the_tile_and_comes_back) {
  press(Qt::Key_Right);
  press(Qt::Key_Menu);
  EXPECT_TRUE(shows("tileReveal"));
  EXPECT_FALSE(shows("tileOpenFolder"));
  press(Qt::Key_Down);
  press(Qt::Key_Return);
  EXPECT_FALSE(shows("tileReveal"));
  EXPECT_EQ(workspace_.opened, std::vector<std::string>{tree_.at("notes.txt")});
  EXPECT_TRUE(hasKeyboard());
  EXPECT_EQ(focused(), tree_.at("notes.txt"));
}

TEST_F(CanvasKeyboard, stays_on_its_tile_through_a_rescan) {
  press(Qt::Key_Right);
  session().rescan();
  finishScan();
  EXPECT_EQ(focused(), tree_.at("notes.txt"));
  EXPECT_TRUE(hasKeyboard());
  press(Qt::Key_Left);
  EXPECT_NE(focused(), tree_.at("notes.txt"));
}

}  // namespace
}  // namespace tessaly
