// Moving about in a finished map.
#include <QPointer>

#include "app/map/TreemapSurface.h"
#include "journeys/Journey.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

class NavigationJourney : public Journey {
 protected:
  NavigationJourney()
      : Journey(
            "Movies/\n"
            "  2023/\n"
            "    Summer/\n"
            "      beach.mp4 6M\n"
            "      hills.mp4 2M\n"
            "    winter.mp4 1M\n"
            "  trailer.mov 1M\n"
            "Code/\n"
            "  main.cpp 2M\n"
            "notes.txt 2M\n"
            "<b>caf\\xE9<br>\\n.zip 2M\n") {
    session().scanHome();
    finishScan();
  }

  std::vector<QQuickItem*> chips() {
    settle(window());
    return itemsNamed(window().contentItem(), "chip");
  }
  QStringList chipTexts() {
    QStringList texts;
    for (QQuickItem* chip : chips()) texts << chip->property("text").toString();
    return texts;
  }
  std::string place() { return session().navigation().current()->path(); }
};

TEST_F(NavigationJourney, shows_no_way_back_at_the_root) {
  EXPECT_FALSE(shows("back"));
  EXPECT_FALSE(shows("crumbs"));
}

TEST_F(NavigationJourney, tells_what_the_tile_under_the_pointer_is) {
  hoverAt(tilePoint("notes.txt"));
  ASSERT_TRUE(session().selection().focused().has_value());
  EXPECT_EQ(session().selection().focused()->path(), tree_.at("notes.txt"));
  QQuickItem* tooltip = item("mapTooltip");
  ASSERT_NE(tooltip, nullptr);
  EXPECT_EQ(itemNamed(tooltip, "tooltipName")->property("text").toString(),
            QStringLiteral("notes.txt"));
}

TEST_F(NavigationJourney, drills_into_a_clicked_folder) {
  clickAt(tilePoint("Movies"));
  EXPECT_EQ(place(), tree_.at("Movies"));
  EXPECT_EQ(itemNamed(item("header"), "name")->property("text").toString(),
            QStringLiteral("Movies"));
  EXPECT_TRUE(shows("back"));
  EXPECT_EQ(chipTexts().size(), 2);
  EXPECT_EQ(chipTexts().last(), QStringLiteral("Movies"));
}

TEST_F(NavigationJourney, forgets_the_pointer_when_it_drills_in) {
  const QPoint movies = tilePoint("Movies");
  hoverAt(movies);
  EXPECT_TRUE(shows("mapTooltip"));
  const QPointer<QQuickItem> before = item("canvas");
  clickAt(movies);
  // Whether the pointer has come to a tile of the new canvas yet is Qt's affair.
  QQuickItem* const after = item("canvas");
  ASSERT_NE(after, nullptr);
  EXPECT_NE(before.data(), after);
  EXPECT_NE(qobject_cast<TreemapSurface*>(after)->hoverPath(), tree_.at("Movies"));
}

TEST_F(NavigationJourney, reveals_a_clicked_file_and_stays) {
  clickAt(tilePoint("notes.txt"));
  dispatch_.drainAll();
  EXPECT_EQ(workspace_.revealed, (std::vector<std::vector<std::string>>{{tree_.at("notes.txt")}}));
  EXPECT_EQ(place(), tree_.path());
}

TEST_F(NavigationJourney, reveals_a_file_by_its_bytes) {
  clickAt(tilePoint("<b>caf\xE9<br>\n.zip"));
  dispatch_.drainAll();
  EXPECT_EQ(workspace_.revealed,
            (std::vector<std::vector<std::string>>{{tree_.at("<b>caf\xE9<br>\n.zip")}}));
}

TEST_F(NavigationJourney, goes_back_one_step) {
  clickAt(tilePoint("Movies"));
  clickAt(tilePoint("Movies/2023"));
  EXPECT_EQ(place(), tree_.at("Movies/2023"));
  click("back");
  EXPECT_EQ(place(), tree_.at("Movies"));
  click("back");
  EXPECT_EQ(place(), tree_.path());
  EXPECT_FALSE(shows("back"));
}

TEST_F(NavigationJourney, jumps_to_a_step_of_the_breadcrumbs) {
  clickAt(tilePoint("Movies"));
  clickAt(tilePoint("Movies/2023"));
  clickAt(tilePoint("Movies/2023/Summer"));
  EXPECT_EQ(chips().size(), 4u);
  clickAt(middleOf(chips()[1]));
  EXPECT_EQ(place(), tree_.at("Movies"));
  EXPECT_EQ(chips().size(), 2u);
  clickAt(middleOf(chips()[0]));
  EXPECT_EQ(place(), tree_.path());
  EXPECT_FALSE(shows("crumbs"));
}

TEST_F(NavigationJourney, reaches_every_step_by_the_keyboard) {
  clickAt(tilePoint("Movies"));
  clickAt(tilePoint("Movies/2023"));
  tabTo("back");
  tabTo("chip");
  EXPECT_TRUE(chips()[0]->hasActiveFocus());
  press(Qt::Key_Tab);
  EXPECT_TRUE(chips()[1]->hasActiveFocus());
  press(Qt::Key_Return);
  EXPECT_EQ(place(), tree_.at("Movies"));
}

TEST_F(NavigationJourney, hides_the_breadcrumbs_but_not_the_way_back_in_another_pane) {
  clickAt(tilePoint("Movies"));
  session().shown().setPane(MainPane::apps);
  EXPECT_FALSE(shows("crumbs"));
  EXPECT_TRUE(shows("back"));
}

TEST_F(NavigationJourney, comes_back_to_the_root_when_a_new_scan_ends) {
  clickAt(tilePoint("Movies"));
  session().rescan();
  EXPECT_EQ(place(), tree_.at("Movies"));
  EXPECT_TRUE(shows("banner"));
  finishScan();
  EXPECT_EQ(place(), tree_.path());
  EXPECT_FALSE(shows("crumbs"));
}

TEST_F(NavigationJourney, keeps_its_place_through_another_way_of_looking) {
  clickAt(tilePoint("Movies"));
  session().shown().setVizMode(VizMode::largest);
  EXPECT_FALSE(shows("canvas"));
  EXPECT_FALSE(shows("header"));
  session().shown().setVizMode(VizMode::treemap);
  EXPECT_TRUE(shows("canvas"));
  EXPECT_EQ(place(), tree_.at("Movies"));
}

}  // namespace
}  // namespace tessaly
