// The map operated by the keyboard alone.
#include <filesystem>
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
    return session().selection().focused() ? session().selection().focused()->path()
                                           : std::string();
  }
  bool hasKeyboard() { return item("canvas")->hasActiveFocus(); }
};

TEST_F(CanvasKeyboard, keys_enter_a_folder_and_leave_it) {
  EXPECT_EQ(focused(), tree_.at("Movies"));
  press(Qt::Key_Return);
  ASSERT_EQ(session().navigation().stack().size(), 2U);
  EXPECT_TRUE(hasKeyboard());
  // The focus stays on the opened folder until the next key.
  EXPECT_EQ(focused(), tree_.at("Movies"));
  EXPECT_FALSE(shows("mapTooltip"));
  press(Qt::Key_Down);
  EXPECT_EQ(focused(), tree_.at("Movies/old"));
  EXPECT_TRUE(shows("mapTooltip"));

  press(Qt::Key_Return);
  ASSERT_EQ(session().navigation().stack().size(), 3U);
  EXPECT_EQ(focused(), tree_.at("Movies/old"));
  press(Qt::Key_Down);
  EXPECT_EQ(focused(), tree_.at("Movies/old/beach.mp4"));

  press(Qt::Key_Escape);
  ASSERT_EQ(session().navigation().stack().size(), 2U);
  EXPECT_TRUE(hasKeyboard());
  press(Qt::Key_Escape);
  ASSERT_EQ(session().navigation().stack().size(), 1U);
  EXPECT_TRUE(hasKeyboard());
  EXPECT_EQ(focused(), tree_.at("Movies/old/beach.mp4"));
  press(Qt::Key_Escape);
  EXPECT_EQ(session().navigation().stack().size(), 1U);
}

TEST_F(CanvasKeyboard, leaving_a_folder_returns_to_its_tile) {
  press(Qt::Key_Return);
  ASSERT_EQ(session().navigation().stack().size(), 2U);
  press(Qt::Key_Escape);
  ASSERT_EQ(session().navigation().stack().size(), 1U);
  EXPECT_EQ(focused(), tree_.at("Movies"));
  EXPECT_EQ(itemNamed(item("mapTooltip"), "tooltipName")->property("text"), "Movies");
}

TEST_F(CanvasKeyboard, the_first_key_only_shows_the_focused_tile) {
  press(Qt::Key_Return);
  ASSERT_EQ(session().navigation().stack().size(), 2U);
  press(Qt::Key_Return, Qt::ControlModifier);
  EXPECT_TRUE(session().cleanupQueue().queue().empty());
  EXPECT_EQ(focused(), tree_.at("Movies/old"));
  press(Qt::Key_Return, Qt::ControlModifier);
  ASSERT_EQ(session().cleanupQueue().queue().size(), 1U);
  EXPECT_EQ(session().cleanupQueue().queue()[0].path(), tree_.at("Movies/old"));
}

TEST_F(CanvasKeyboard, command_delete_moves_the_item_that_had_the_focus_before_a_folder_opened) {
  for (const char* below : {"Movies", "Movies/old", "Movies/new.mp4", "notes.txt"})
    machine_.trash.put(tree_.at(below), below);
  press(Qt::Key_Right);
  ASSERT_EQ(focused(), tree_.at("notes.txt"));
  session().open(session().navigation().current()->children()[0]);
  settle(window());
  press(Qt::Key_Backspace, Qt::ControlModifier);
  EXPECT_FALSE(machine_.trash.has(tree_.at("notes.txt")));
  EXPECT_TRUE(machine_.trash.has(tree_.at("Movies/old")));
}

TEST_F(CanvasKeyboard, command_delete_moves_nothing_else_if_its_item_is_gone) {
  for (const char* below : {"Movies", "notes.txt"}) machine_.trash.put(tree_.at(below), below);
  press(Qt::Key_Right);
  ASSERT_EQ(focused(), tree_.at("notes.txt"));
  press(Qt::Key_Backspace, Qt::ControlModifier);
  ASSERT_FALSE(machine_.trash.has(tree_.at("notes.txt")));
  std::filesystem::remove(tree_.at("notes.txt"));
  finishScan();
  EXPECT_EQ(focused(), tree_.at("notes.txt"));
  EXPECT_FALSE(shows("mapTooltip"));
  press(Qt::Key_Backspace, Qt::ControlModifier);
  EXPECT_TRUE(machine_.trash.has(tree_.at("Movies")));
  finishScan();
  press(Qt::Key_Left);
  EXPECT_EQ(focused(), tree_.at("Movies"));
  EXPECT_TRUE(shows("mapTooltip"));
}

TEST_F(CanvasKeyboard, escape_collapses_the_queue_before_it_goes_back) {
  press(Qt::Key_Return);
  press(Qt::Key_Down);
  press(Qt::Key_Return, Qt::ControlModifier);
  ASSERT_TRUE(session().cleanupQueue().queueOpen());
  press(Qt::Key_Escape);
  EXPECT_TRUE(session().cleanupQueue().queueOpen());
  EXPECT_TRUE(session().cleanupQueue().queueMinimized());
  EXPECT_EQ(session().navigation().stack().size(), 2U);
  press(Qt::Key_Escape);
  EXPECT_EQ(session().navigation().stack().size(), 1U);
  EXPECT_TRUE(session().cleanupQueue().queueOpen());
}

TEST_F(CanvasKeyboard, commands_act_on_the_focused_tile) {
  press(Qt::Key_Right);
  ASSERT_EQ(focused(), tree_.at("notes.txt"));
  press(Qt::Key_L, Qt::ControlModifier);
  ASSERT_EQ(session().cleanupQueue().queue().size(), 1U);
  EXPECT_EQ(session().cleanupQueue().queue()[0].path(), tree_.at("notes.txt"));
  press(Qt::Key_Space);
  EXPECT_EQ(machine_.previewPanel.shown.size(), 1U);
}

TEST_F(CanvasKeyboard, a_key_opens_the_menu_of_the_tile_and_the_map_gets_the_keyboard_back) {
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

TEST_F(CanvasKeyboard, the_focus_stays_on_its_tile_through_a_rescan) {
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
