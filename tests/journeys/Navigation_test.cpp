// Navigation in a finished map.
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

TEST_F(NavigationJourney, there_is_no_back_button_at_the_root) {
  EXPECT_FALSE(shows("back"));
  EXPECT_FALSE(shows("crumbs"));
}

TEST_F(NavigationJourney, the_tooltip_describes_the_tile_under_the_pointer) {
  hoverAt(tilePoint("notes.txt"));
  ASSERT_TRUE(session().selection().focused().has_value());
  EXPECT_EQ(session().selection().focused()->path(), tree_.at("notes.txt"));
  QQuickItem* tooltip = item("mapTooltip");
  ASSERT_NE(tooltip, nullptr);
  EXPECT_EQ(itemNamed(tooltip, "tooltipName")->property("text").toString(),
            QStringLiteral("notes.txt"));
}

TEST_F(NavigationJourney, a_click_on_a_folder_drills_in) {
  clickAt(tilePoint("Movies"));
  EXPECT_EQ(place(), tree_.at("Movies"));
  EXPECT_EQ(itemNamed(item("header"), "name")->property("text").toString(),
            QStringLiteral("Movies"));
  EXPECT_TRUE(shows("back"));
  EXPECT_EQ(chipTexts().size(), 2);
  EXPECT_EQ(chipTexts().last(), QStringLiteral("Movies"));
}

TEST_F(NavigationJourney, drilling_in_resets_the_pointer) {
  const QPoint movies = tilePoint("Movies");
  hoverAt(movies);
  EXPECT_TRUE(shows("mapTooltip"));
  const QPointer<QQuickItem> before = item("canvas");
  clickAt(movies);
  // Qt decides whether the pointer has entered a tile of the new canvas yet.
  QQuickItem* const after = item("canvas");
  ASSERT_NE(after, nullptr);
  EXPECT_NE(before.data(), after);
  EXPECT_NE(qobject_cast<TreemapSurface*>(after)->hoverPath(), tree_.at("Movies"));
}

TEST_F(NavigationJourney, a_click_on_a_file_reveals_it_and_keeps_the_folder) {
  clickAt(tilePoint("notes.txt"));
  dispatch_.drainAll();
  EXPECT_EQ(workspace_.revealed, (std::vector<std::vector<std::string>>{{tree_.at("notes.txt")}}));
  EXPECT_EQ(place(), tree_.path());
}

TEST_F(NavigationJourney, a_file_is_revealed_by_the_bytes_of_its_path) {
  clickAt(tilePoint("<b>caf\xE9<br>\n.zip"));
  dispatch_.drainAll();
  EXPECT_EQ(workspace_.revealed,
            (std::vector<std::vector<std::string>>{{tree_.at("<b>caf\xE9<br>\n.zip")}}));
}

TEST_F(NavigationJourney, back_goes_up_one_step) {
  clickAt(tilePoint("Movies"));
  clickAt(tilePoint("Movies/2023"));
  EXPECT_EQ(place(), tree_.at("Movies/2023"));
  click("back");
  EXPECT_EQ(place(), tree_.at("Movies"));
  click("back");
  EXPECT_EQ(place(), tree_.path());
  EXPECT_FALSE(shows("back"));
}

TEST_F(NavigationJourney, a_breadcrumb_jumps_to_its_folder) {
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

TEST_F(NavigationJourney, the_keyboard_reaches_every_breadcrumb) {
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

TEST_F(NavigationJourney, another_pane_hides_the_breadcrumbs_but_not_the_back_button) {
  clickAt(tilePoint("Movies"));
  session().shown().setPane(MainPane::apps);
  EXPECT_FALSE(shows("crumbs"));
  EXPECT_TRUE(shows("back"));
}

TEST_F(NavigationJourney, a_new_scan_returns_to_the_root) {
  clickAt(tilePoint("Movies"));
  session().rescan();
  EXPECT_EQ(place(), tree_.at("Movies"));
  EXPECT_TRUE(shows("banner"));
  finishScan();
  EXPECT_EQ(place(), tree_.path());
  EXPECT_FALSE(shows("crumbs"));
}

TEST_F(NavigationJourney, another_mode_keeps_the_folder) {
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
