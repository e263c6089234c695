// The list of items that have grown since the previous scan, in place of the map.
#include <gmock/gmock.h>
#include <string>
#include <vector>

#include "journeys/Journey.h"
#include "support/Look.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

using testing::IsEmpty;

class GrewListJourney : public Journey {
 protected:
  GrewListJourney()
      : Journey(
            "Movies/\n"
            "  beach.mp4 60M\n"
            "notes.txt 20M\n") {
    session().scanHome();
    finishScan();
    click("grewMode");
  }

  std::vector<QQuickItem*> rows() { return itemsNamed(window().contentItem(), "grewRow"); }
};

TEST_F(GrewListJourney, each_row_shows_the_growth_of_its_item) {
  EXPECT_FALSE(shows("canvas"));
  EXPECT_EQ(text("listTitle"), "Grew since last scan of this folder");
  EXPECT_EQ(text("listCaption"),
            "Rescan the same root to see what got bigger. Orange tiles on the treemap are the same "
            "paths.");
  ASSERT_EQ(rows().size(), session().result().deltas().size());
  QQuickItem* movies = nullptr;
  for (QQuickItem* const row : rows()) {
    if (row->property("name") == "Movies") movies = row;
  }
  ASSERT_NE(movies, nullptr);
  expectLook(movies, {{"name", "text", "Movies"},
                      {"name", "font.pixelSize", 13},
                      {"place", "text", QString::fromStdString(tree_.at("Movies"))},
                      {"place", "font.pixelSize", 11},
                      {"growth", "text", "+60.0 MB"},
                      {"growth", "color", "#ff9500 at 1.00"},
                      {"growth", "width", 72},
                      {"size", "text", "60.0 MB"},
                      {"size", "color", "#9ca3af at 1.00"}});
}

TEST_F(GrewListJourney, arrows_and_return_show_an_item_on_the_map_which_gets_the_focus) {
  tabTo("rowFace");
  press(Qt::Key_End);
  press(Qt::Key_Return);
  EXPECT_TRUE(shows("canvas"));
  ASSERT_TRUE(session().selection().focused());
  EXPECT_EQ(session().selection().focused()->path(), session().result().deltas().back().path);
  EXPECT_TRUE(item("canvas")->hasActiveFocus());
}

TEST_F(GrewListJourney, the_title_says_if_there_is_nothing_to_compare) {
  session().rescan();
  finishScan();
  ASSERT_THAT(session().result().deltas(), IsEmpty());
  EXPECT_EQ(text("listTitle"), "No growth to compare yet");
  EXPECT_FALSE(shows("emptyMessage"));
  EXPECT_THAT(rows(), IsEmpty());
}

}  // namespace
}  // namespace tessaly
