// The list of the largest files, in place of the map.
#include <filesystem>
#include <gmock/gmock.h>
#include <string>
#include <vector>

#include <QAccessible>
#include <QTest>

#include "journeys/CommandKeys.h"
#include "journeys/Journey.h"
#include "support/Look.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

class LargestListJourney : public Journey {
 protected:
  LargestListJourney()
      : Journey(
            "Movies/\n"
            "  2023/\n"
            "    beach.mp4 60M\n"
            "Backups/\n"
            "  disk.dmg 30M\n"
            "notes.txt 20M\n"
            "song.mp3 10M\n") {
    for (const char* below : {"Movies/2023/beach.mp4", "Backups/disk.dmg", "notes.txt", "song.mp3"})
      machine_.trash.put(tree_.at(below), below);
    session().scanHome();
    finishScan();
    click("largestMode");
  }

  std::vector<QQuickItem*> rows() { return itemsNamed(window().contentItem(), "largestRow"); }
  // The name of the file in the row with the keyboard focus.
  std::string keyboardRow() {
    for (QQuickItem* const row : rows()) {
      if (row->hasActiveFocus()) return row->property("name").toString().toStdString();
    }
    return {};
  }
  std::vector<std::string> names() {
    std::vector<std::string> names;
    for (QQuickItem* const row : rows())
      names.push_back(row->property("name").toString().toStdString());
    return names;
  }
  // Moves the keyboard focus to the first row.
  void enter() {
    tabTo("rowFace");
    ASSERT_EQ(keyboardRow(), "beach.mp4");
  }
  std::string focused() {
    return session().selection().focused() ? session().selection().focused()->path()
                                           : std::string();
  }
  std::vector<std::string> queued() {
    std::vector<std::string> paths;
    for (const DiskNode& node : session().cleanupQueue().queue()) paths.push_back(node.path());
    return paths;
  }
};

TEST_F(LargestListJourney, the_list_replaces_the_map_and_has_one_row_per_file) {
  EXPECT_FALSE(shows("canvas"));
  expectLook(item("largestList"),
             {{"listTitle", "text", "Largest files"},
              {"listCaption", "text",
               "Biggest files in this scan. Click a row to show it on the treemap."}});
  EXPECT_THAT(names(), ElementsAre("beach.mp4", "disk.dmg", "notes.txt", "song.mp3"));
  expectLook(rows()[0],
             {{"name", "text", "beach.mp4"},
              {"name", "font.pixelSize", 13},
              {"name", "color", "#ffffff at 1.00"},
              {"place", "text", QString::fromStdString(tree_.at("Movies/2023/beach.mp4"))},
              {"place", "font.pixelSize", 11},
              {"place", "color", "#9ca3af at 1.00"},
              {"kind", "text", "Video"},
              {"kind", "font.pixelSize", 11},
              {"kind", "color", "#9ca3af at 1.00"},
              {"size", "text", "60.0 MB"},
              {"size", "width", 84},
              {"size", "horizontalAlignment", int(Qt::AlignRight)},
              {"queueRow", "text", "Queue"}});
  QAccessibleInterface* const told =
      QAccessible::queryAccessibleInterface(itemNamed(rows()[1], "rowFace"));
  EXPECT_EQ(
      told->text(QAccessible::Name),
      QString::fromStdString("disk.dmg, Disk image, 30.0 MB, " + tree_.at("Backups/disk.dmg")));
}

TEST_F(LargestListJourney, a_click_on_a_row_shows_its_file_on_the_map) {
  clickAt(middleOf(itemNamed(rows()[0], "kind")));
  EXPECT_TRUE(shows("canvas"));
  EXPECT_FALSE(shows("largestList"));
  EXPECT_EQ(focused(), tree_.at("Movies/2023/beach.mp4"));
  EXPECT_EQ(session().navigation().current()->path(), tree_.at("Movies/2023"));
}

TEST_F(LargestListJourney, arrows_and_return_show_a_file_on_the_map_which_gets_the_focus) {
  enter();
  press(Qt::Key_Down);
  press(Qt::Key_Down);
  EXPECT_EQ(keyboardRow(), "notes.txt");
  press(Qt::Key_Up);
  EXPECT_EQ(keyboardRow(), "disk.dmg");
  press(Qt::Key_Return);
  ASSERT_TRUE(shows("canvas"));
  EXPECT_EQ(session().navigation().current()->path(), tree_.at("Backups"));
  EXPECT_TRUE(item("canvas")->hasActiveFocus());
  EXPECT_EQ(focused(), tree_.at("Backups/disk.dmg"));
}

TEST_F(LargestListJourney, escape_returns_to_the_map_with_its_own_focused_item) {
  const DiskNode song = session().navigation().current()->children()[3];
  session().selection().setFocused(song);
  enter();
  press(Qt::Key_Down);
  press(Qt::Key_Escape);
  ASSERT_TRUE(shows("canvas"));
  EXPECT_TRUE(item("canvas")->hasActiveFocus());
  EXPECT_EQ(focused(), song.path());
}

TEST_F(LargestListJourney, the_buttons_of_rows_add_files_to_the_queue) {
  enter();
  press(Qt::Key_Tab);
  press(Qt::Key_Return);
  EXPECT_THAT(queued(), ElementsAre(tree_.at("Movies/2023/beach.mp4")));
  clickAt(middleOf(itemNamed(rows()[1], "queueRow")));
  EXPECT_THAT(queued(),
              ElementsAre(tree_.at("Movies/2023/beach.mp4"), tree_.at("Backups/disk.dmg")));
  EXPECT_TRUE(shows("largestList"));
}

TEST_F(LargestListJourney, keys_open_the_menu_of_the_focused_row) {
  enter();
  press(Qt::Key_Down);
  press(Qt::Key_Menu);
  ASSERT_TRUE(shows("largestShowOnMap"));
  std::vector<std::string> texts;
  for (QQuickItem* const entry : item("menuColumn")->childItems()) {
    if (entry->isVisible()) texts.push_back(entry->property("text").toString().toStdString());
  }
  EXPECT_THAT(texts, ElementsAre("Show on map", "Show in File Manager", "Quick Look",
                                 "Add to Cleanup Queue"));
  press(Qt::Key_Escape);
  EXPECT_FALSE(shows("largestShowOnMap"));
  EXPECT_EQ(keyboardRow(), "disk.dmg");

  press(Qt::Key_F10, Qt::ShiftModifier);
  press(Qt::Key_Down);
  press(Qt::Key_Return);
  EXPECT_THAT(workspace_.revealed, ElementsAre(ElementsAre(tree_.at("Backups/disk.dmg"))));
  press(Qt::Key_Menu);
  press(Qt::Key_End);
  press(Qt::Key_Return);
  EXPECT_THAT(queued(), ElementsAre(tree_.at("Backups/disk.dmg")));
  press(Qt::Key_Menu);
  press(Qt::Key_Down);
  press(Qt::Key_Down);
  press(Qt::Key_Return);
  EXPECT_THAT(machine_.previewPanel.shown, SizeIs(1));
  EXPECT_EQ(keyboardRow(), "disk.dmg");
  press(Qt::Key_Menu);
  press(Qt::Key_Return);
  EXPECT_TRUE(shows("canvas"));
  EXPECT_EQ(focused(), tree_.at("Backups/disk.dmg"));
  EXPECT_TRUE(item("canvas")->hasActiveFocus());
}

TEST_F(LargestListJourney, a_right_click_opens_the_menu_of_its_row) {
  QTest::mouseClick(&window(), Qt::RightButton, Qt::NoModifier,
                    middleOf(itemNamed(rows()[2], "name")));
  ASSERT_TRUE(shows("largestShowOnMap"));
  click("largestShowOnMap");
  EXPECT_TRUE(shows("canvas"));
  EXPECT_EQ(focused(), tree_.at("notes.txt"));
}

TEST_F(LargestListJourney, the_focus_moves_to_the_next_row_when_its_file_is_moved_to_the_trash) {
  enter();
  press(Qt::Key_Down);
  press(Qt::Key_Backspace, command);
  EXPECT_FALSE(machine_.trash.has(tree_.at("Backups/disk.dmg")));
  EXPECT_THAT(session().removal().lastTrashed(), SizeIs(1));
  EXPECT_TRUE(shows("putBack"));
  std::filesystem::remove(tree_.at("Backups/disk.dmg"));
  finishScan();
  EXPECT_THAT(names(), ElementsAre("beach.mp4", "notes.txt", "song.mp3"));
  EXPECT_EQ(keyboardRow(), "notes.txt");
  press(Qt::Key_L, command);
  EXPECT_THAT(queued(), ElementsAre(tree_.at("notes.txt")));
}

}  // namespace
}  // namespace tessaly
