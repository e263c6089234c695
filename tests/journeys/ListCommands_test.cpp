// The commands on a single item, in the lists in place of the map: they act on the row with the
// keyboard focus, and never on the item that has the focus on the hidden map.
#include <gmock/gmock.h>
#include <ostream>
#include <string>
#include <vector>

#include "journeys/CommandJourney.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class InPlaceOfTheMap : public CommandJourney {
 protected:
  InPlaceOfTheMap()
      : CommandJourney(
            "Movies/\n"
            "  beach.mp4 60M\n"
            "notes.txt 20M\n") {
    scan();
    session().selection().setFocused(child(0));
  }

  void expectNothingDone() {
    EXPECT_THAT(machine_.previewPanel.shown, IsEmpty());
    EXPECT_THAT(session().cleanupQueue().queue(), IsEmpty());
    EXPECT_FALSE(machine_.pasteboard.text.has_value());
    EXPECT_THAT(session().removal().lastTrashed(), IsEmpty());
    EXPECT_FALSE(session().removal().criticalWarning());
    EXPECT_TRUE(machine_.trash.has(tree_.at("Movies")));
    EXPECT_EQ(session().run().status(), ScanStatus::complete);
  }
  void expectCommandsDoNothing() {
    press(Qt::Key_Space);
    press(Qt::Key_Y, command);
    press(Qt::Key_L, command);
    press(Qt::Key_C, commandShift);
    press(Qt::Key_Backspace, command);
    expectNothingDone();
    for (const char* title :
         {"Quick Look", "Queue Focused Item", "Copy Path", "Move Focused to Trash"})
      choose(title);
    expectNothingDone();
  }
};

struct List {
  const char* button;
  const char* row;
};

void PrintTo(const List& list, std::ostream* out) {
  *out << list.row;
}

class ListCommands : public InPlaceOfTheMap, public testing::WithParamInterface<List> {
 protected:
  ListCommands() { click(GetParam().button); }

  std::vector<QQuickItem*> listRows() { return itemsNamed(window().contentItem(), GetParam().row); }
  // The name of the item in the row with the keyboard focus.
  std::string keyboardRow() {
    for (QQuickItem* const row : listRows()) {
      if (row->hasActiveFocus()) return row->property("name").toString().toStdString();
    }
    return {};
  }
  // Moves the keyboard focus to the row of notes.txt.
  void enter() {
    tabTo("rowFace");
    press(Qt::Key_Home);
    for (std::size_t row = 0; row < listRows().size() && keyboardRow() != "notes.txt"; ++row)
      press(Qt::Key_Down);
    ASSERT_EQ(keyboardRow(), "notes.txt");
  }
  std::string notes() { return tree_.at("notes.txt"); }
};

TEST_P(ListCommands, commands_do_nothing_before_a_row_has_the_keyboard) {
  ASSERT_THAT(listRows(), testing::Not(IsEmpty()));
  expectCommandsDoNothing();
}

TEST_P(ListCommands, commands_do_nothing_after_the_keyboard_has_left_the_rows) {
  enter();
  tabTo("historyMode");
  expectCommandsDoNothing();
}

TEST_P(ListCommands, space_and_command_y_preview_the_row) {
  enter();
  press(Qt::Key_Space);
  press(Qt::Key_Y, command);
  choose("Quick Look");
  EXPECT_THAT(machine_.previewPanel.shown,
              ElementsAre("file://" + notes(), "file://" + notes(), "file://" + notes()));
  EXPECT_EQ(keyboardRow(), "notes.txt");
}

TEST_P(ListCommands, command_l_queues_the_row_with_its_size) {
  enter();
  press(Qt::Key_L, command);
  choose("Queue Focused Item");
  ASSERT_THAT(session().cleanupQueue().queue(), SizeIs(1));
  EXPECT_EQ(session().cleanupQueue().queue()[0], child(1));
  EXPECT_EQ(child(1).path(), notes());
}

TEST_P(ListCommands, copy_path_copies_the_path_of_the_row) {
  enter();
  press(Qt::Key_C, commandShift);
  EXPECT_EQ(machine_.pasteboard.text, notes());
}

TEST_P(ListCommands, the_row_is_moved_to_the_trash_and_put_back) {
  enter();
  press(Qt::Key_Backspace, command);
  EXPECT_FALSE(machine_.trash.has(notes()));
  EXPECT_TRUE(machine_.trash.has(tree_.at("Movies")));
  EXPECT_EQ(text("toast"), QStringLiteral("Moved notes.txt to Trash"));
  EXPECT_THAT(session().removal().lastTrashed(), SizeIs(1));
  EXPECT_TRUE(shows("banner"));
  finishScan();
  click("putBack");
  EXPECT_TRUE(machine_.trash.has(notes()));
}

TEST_P(ListCommands, the_menu_moves_the_row_to_the_trash) {
  enter();
  choose("Move Focused to Trash");
  EXPECT_FALSE(machine_.trash.has(notes()));
  EXPECT_TRUE(machine_.trash.has(tree_.at("Movies")));
}

// Selected are the items of the folder on the map in every mode, like the buttons of the selection
// in the mode bar, which show how many there are.
TEST_P(ListCommands, command_a_selects_the_items_of_the_folder_and_shows_how_many) {
  enter();
  press(Qt::Key_A, command);
  EXPECT_THAT(session().selection().selectedNodes(), ElementsAre(child(0), child(1)));
  EXPECT_EQ(text("toast"), QStringLiteral("Selected 2"));
  EXPECT_EQ(text("zipSelection"), QStringLiteral("Zip (2)"));
  EXPECT_EQ(keyboardRow(), "notes.txt");
}

TEST_P(ListCommands, the_map_keeps_its_focused_item) {
  enter();
  press(Qt::Key_L, command);
  press(Qt::Key_Escape);  // collapses the queue
  press(Qt::Key_Escape);
  ASSERT_TRUE(shows("canvas"));
  EXPECT_EQ(session().selection().focused(), child(0));
  press(Qt::Key_Y, command);
  EXPECT_THAT(machine_.previewPanel.shown, ElementsAre("file://" + tree_.at("Movies")));
}

INSTANTIATE_TEST_SUITE_P(Lists, ListCommands,
                         testing::Values(List{"grewMode", "grewRow"},
                                         List{"largestMode", "largestRow"}),
                         [](const auto& list) { return std::string(list.param.row); });

using GrewCommands = InPlaceOfTheMap;

TEST_F(GrewCommands, a_critical_row_is_moved_only_after_a_warning) {
  machine_.trash.put(tree_.path());
  click("grewMode");
  tabTo("rowFace");
  ASSERT_EQ(session().result().deltas().front().path, tree_.path());
  press(Qt::Key_Backspace, command);
  ASSERT_TRUE(shows("protectedLocation"));
  EXPECT_EQ(session().removal().criticalWarning()->path(), tree_.path());
  press(Qt::Key_Escape);
  EXPECT_FALSE(shows("protectedLocation"));
  EXPECT_TRUE(machine_.trash.has(tree_.path()));
  press(Qt::Key_Space);
  EXPECT_THAT(machine_.previewPanel.shown, ElementsAre("file://" + tree_.path()));
}

class ModesWithoutItems : public InPlaceOfTheMap,
                          public testing::WithParamInterface<const char*> {};

TEST_P(ModesWithoutItems, commands_do_nothing) {
  click(GetParam());
  ASSERT_FALSE(shows("canvas"));
  expectCommandsDoNothing();
}

INSTANTIATE_TEST_SUITE_P(Modes, ModesWithoutItems, testing::Values("compareMode", "historyMode"),
                         [](const auto& mode) { return std::string(mode.param); });

}  // namespace
}  // namespace tessaly
