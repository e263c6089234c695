// The list of the items in which two folders differ, in place of the map.
#include <gmock/gmock.h>
#include <string>
#include <vector>

#include <QAccessible>

#include "journeys/CommandKeys.h"
#include "journeys/Journey.h"
#include "support/Look.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class CompareListJourney : public Journey {
 protected:
  CompareListJourney()
      : Journey(
            "today/\n"
            "  Movies/\n"
            "    holiday.mp4 4M\n"
            "    short.mov 1M\n"
            "  letter.txt 2M\n"
            "backup/\n"
            "  Movies/\n"
            "    holiday.mp4 4M\n"
            "  old/\n"
            "    draft 3M\n") {
    session().scan(tree_.at("today"));
    finishScan();
    click("compareMode");
  }

  void compare() {
    folderPanel_.answer = tree_.at("backup");
    click("chooseCompared");
    finishScan();
  }
  std::vector<QQuickItem*> rows() { return itemsNamed(window().contentItem(), "compareRow"); }
  std::string keyboardRow() {
    for (QQuickItem* const row : rows()) {
      if (row->hasActiveFocus()) return row->property("place").toString().toStdString();
    }
    return {};
  }
};

TEST_F(CompareListJourney, the_mode_asks_for_a_second_folder) {
  expectLook(item("compareList"),
             {{"listTitle", "text", "Folder compare"},
              {"listCaption", "text",
               "Click Compare… and pick a second folder. Sizes are matched by relative path."},
              {"listCaption", "color", "#9ca3af at 1.00"},
              {"chooseCompared", "text", "Choose folder…"}});
  EXPECT_FALSE(shows("compareTitles"));
  EXPECT_THAT(rows(), IsEmpty());
  click("chooseCompared");
  EXPECT_THAT(folderPanel_.requests, SizeIs(1));
}

TEST_F(CompareListJourney, each_difference_has_a_row_in_four_columns) {
  compare();
  EXPECT_EQ(text("listCaption"), "today  vs  backup");
  expectLook(item("compareTitles"), {{"place", "text", "Path"},
                                     {"left", "text", "Left"},
                                     {"left", "width", 80},
                                     {"left", "horizontalAlignment", int(Qt::AlignRight)},
                                     {"right", "text", "Right"},
                                     {"right", "width", 80},
                                     {"difference", "text", ""},
                                     {"difference", "width", 80}});
  ASSERT_THAT(rows(), SizeIs(session().comparison().compareRows().size()));
  std::vector<std::string> places;
  for (QQuickItem* const row : rows())
    places.push_back(row->property("place").toString().toStdString());
  EXPECT_THAT(places, ElementsAre("old", "old/draft", "letter.txt", "Movies", "Movies/short.mov"));
  expectLook(rows()[0], {{"place", "text", "old"},
                         {"place", "font.pixelSize", 11},
                         {"left", "text", "0 B"},
                         {"right", "text", "3.0 MB"},
                         {"difference", "text", "+3.0 MB"},
                         {"difference", "color", "#ff9500 at 1.00"},
                         {"difference", "width", 80},
                         {"difference", "horizontalAlignment", int(Qt::AlignRight)}});
  expectLook(rows()[3], {{"left", "text", "5.0 MB"},
                         {"right", "text", "4.0 MB"},
                         {"difference", "text", "\u22121.0 MB"},
                         {"difference", "color", "#34c759 at 1.00"}});
  // The titles are above their columns.
  for (const char* column : {"left", "right", "difference"}) {
    const QQuickItem* const title = itemNamed(item("compareTitles"), column);
    const QQuickItem* const cell = itemNamed(rows()[0], column);
    EXPECT_EQ(title->mapToScene({0, 0}).x(), cell->mapToScene({0, 0}).x()) << column;
  }
  QAccessibleInterface* const told =
      QAccessible::queryAccessibleInterface(itemNamed(rows()[3], "rowFace"));
  EXPECT_EQ(told->text(QAccessible::Name), "Movies, left 5.0 MB, right 4.0 MB, \u22121.0 MB");
}

TEST_F(CompareListJourney, the_list_says_which_folder_it_is_compared_with_until_that_has_ended) {
  folderPanel_.answer = tree_.at("backup");
  click("chooseCompared");
  expectLook(item("compareList"), {{"emptyMessage", "text", "Comparing with backup…"},
                                   {"emptyMessage", "color", "#9ca3af at 1.00"}});
  EXPECT_TRUE(shows("emptyMessage"));
  EXPECT_FALSE(shows("compareProgress"));
  finishScan();
  EXPECT_FALSE(shows("emptyMessage"));
  EXPECT_FALSE(shows("compareProgress"));

  // The rows of the last comparison stay until then.
  folderPanel_.answer = tree_.at("backup/old");
  click("chooseCompared");
  EXPECT_FALSE(shows("emptyMessage"));
  EXPECT_TRUE(shows("compareProgress"));
  expectLook(item("compareList"), {{"compareProgress", "text", "Comparing with old…"},
                                   {"compareProgress", "font.pixelSize", 12},
                                   {"compareProgress", "color", "#9ca3af at 1.00"}});
  const QQuickItem* const progress = item("compareProgress");
  const QQuickItem* const choose = item("chooseCompared");
  EXPECT_GT(progress->width(), 60);
  EXPECT_LT(progress->mapToScene({progress->width(), 0}).x(), choose->mapToScene({0, 0}).x());
  EXPECT_EQ(choose->mapToScene({choose->width(), 0}).x(),
            item("compareList")->mapToScene({item("compareList")->width() - 18, 0}).x());
  EXPECT_THAT(rows(), testing::Not(IsEmpty()));
  // The same in a page that is shown later.
  click("historyMode");
  click("compareMode");
  ASSERT_TRUE(shows("compareProgress"));
  EXPECT_GT(item("compareProgress")->width(), 60);
  finishScan();
  EXPECT_FALSE(shows("compareProgress"));
}

TEST_F(CompareListJourney, arrows_move_through_the_rows_which_have_no_action) {
  compare();
  tabTo("rowFace");
  EXPECT_EQ(keyboardRow(), "old");
  press(Qt::Key_End);
  EXPECT_EQ(keyboardRow(), "Movies/short.mov");
  press(Qt::Key_Return);
  clickAt(middleOf(rows()[0]));
  EXPECT_EQ(session().shown().vizMode(), VizMode::compare);
}

TEST_F(CompareListJourney, the_windows_shortcuts_do_nothing_to_the_item_of_the_hidden_map) {
  compare();
  machine_.trash.put(tree_.at("today/letter.txt"));
  session().selection().setFocused(session().navigation().current()->children()[1]);
  tabTo("rowFace");
  press(Qt::Key_Space);
  press(Qt::Key_Y, command);
  press(Qt::Key_L, command);
  press(Qt::Key_Backspace, command);
  EXPECT_THAT(machine_.previewPanel.shown, IsEmpty());
  EXPECT_THAT(session().cleanupQueue().queue(), IsEmpty());
  EXPECT_TRUE(machine_.trash.has(tree_.at("today/letter.txt")));
  EXPECT_TRUE(shows("compareList"));
}

}  // namespace
}  // namespace tessaly
