// The history of the scanned folder, in place of the map.
#include <chrono>
#include <filesystem>
#include <gmock/gmock.h>
#include <string>
#include <vector>

#include <QAccessible>

#include "app/panes/HistoryTexts.h"
#include "journeys/CommandKeys.h"
#include "journeys/Journey.h"
#include "support/Look.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

// Made before the program that reads it.
struct Calendar {
  std::chrono::system_clock::time_point date{};
};

class HistoryListJourney : protected Calendar, public Journey {
 protected:
  HistoryListJourney()
      : Journey("film.mp4 60M\n", [this](Application::Services& services) {
          services.date = [this] { return date; };
        }) {}

  void scanOn(std::int64_t seconds) {
    date = std::chrono::system_clock::from_time_t(seconds);
    session().scanHome();
    finishScan();
  }
  std::vector<QQuickItem*> rows() { return itemsNamed(window().contentItem(), "historyRow"); }
  double lengthOfBar(std::size_t row) { return itemNamed(rows()[row], "bar")->width(); }
  double lengthOfTrack(std::size_t row) { return itemNamed(rows()[row], "track")->width(); }
  const std::vector<HistoryPoint>& points() { return session().result().history(); }
  QPoint placeOfScan(int index) {
    QQuickItem* const chart = item("historyChart");
    chart->setProperty("marked", index);
    const QPointF place = chart->property("markPlace").toPointF();
    return chart->mapToScene({place.x(), chart->height() / 2}).toPoint();
  }
};

TEST_F(HistoryListJourney, each_scan_adds_a_row_and_a_point_to_the_line) {
  scanOn(1700000000);
  click("historyMode");
  expectLook(item("historyList"),
             {{"listTitle", "text", "Disk history"},
              {"listCaption", "text",
               "Each completed scan of this root is a point. Compare weeks, not just the last "
               "run."}});
  EXPECT_TRUE(shows("historyChart"));
  ASSERT_THAT(rows(), SizeIs(1));
  expectLook(rows()[0], {{"time", "text", HistoryTexts::time(1700000000)},
                         {"time", "font.pixelSize", 11},
                         {"time", "width", 118},
                         {"bar", "height", 10},
                         {"size", "text", "60.0 MB"},
                         {"size", "font.pixelSize", 12},
                         {"size", "font.weight", 500},
                         {"size", "width", 72}});
  EXPECT_EQ(lengthOfBar(0), lengthOfTrack(0));

  tree_.plant("more.mp4 180M\n");
  scanOn(1700604800);
  std::filesystem::remove(tree_.at("more.mp4"));
  scanOn(1701209600);
  ASSERT_THAT(rows(), SizeIs(3));
  EXPECT_EQ(lengthOfBar(0), lengthOfTrack(0) / 4);
  EXPECT_EQ(lengthOfBar(1), lengthOfTrack(1));
  EXPECT_EQ(itemNamed(rows()[1], "size")->property("text"), "240.0 MB");
  EXPECT_EQ(QAccessible::queryAccessibleInterface(item("historyLine"))->text(QAccessible::Name),
            HistoryTexts::summary(points()));
  EXPECT_EQ(QAccessible::queryAccessibleInterface(itemNamed(rows()[1], "rowFace"))
                ->text(QAccessible::Name),
            HistoryTexts::time(1700604800) + ", 240.0 MB");
}

TEST_F(HistoryListJourney, a_scan_far_below_the_largest_has_a_bar_of_four_points) {
  ScanStore::appendHistory({1600000000, 0, 0}, tree_.path(), machine_.support.path());
  scanOn(1700000000);
  click("historyMode");
  ASSERT_THAT(rows(), SizeIs(2));
  EXPECT_EQ(lengthOfBar(0), 4);
}

TEST_F(HistoryListJourney, without_a_history_the_list_asks_for_scans) {
  scanOn(1700000000);
  for (const auto& file : std::filesystem::directory_iterator(machine_.support.path())) {
    if (file.path().filename().string().starts_with("history"))
      std::filesystem::remove(file.path());
  }
  restart();
  click("historyMode");
  EXPECT_EQ(text("emptyMessage"), "Scan this folder a few times to build a history.");
  EXPECT_FALSE(shows("historyChart"));
}

TEST_F(HistoryListJourney, the_scan_under_the_pointer_is_described) {
  scanOn(1700000000);
  tree_.plant("more.mp4 180M\n");
  scanOn(1700604800);
  click("historyMode");
  EXPECT_FALSE(shows("historyBubble"));
  const QPoint second = placeOfScan(1);
  const QPoint first = placeOfScan(0);
  hoverAt(second);
  EXPECT_EQ(text("historyWords"), HistoryTexts::scan(points(), 1));
  hoverAt(first);
  EXPECT_EQ(text("historyWords"), HistoryTexts::scan(points(), 0));
}

TEST_F(HistoryListJourney, the_row_with_the_keyboard_is_marked_in_the_line) {
  scanOn(1700000000);
  scanOn(1700604800);
  click("historyMode");
  tabTo("rowFace");
  EXPECT_EQ(text("historyWords"), HistoryTexts::scan(points(), 0));
  press(Qt::Key_Down);
  EXPECT_EQ(text("historyWords"), HistoryTexts::scan(points(), 1));
  press(Qt::Key_Return);
  EXPECT_TRUE(shows("historyList"));
  press(Qt::Key_Tab);
  EXPECT_FALSE(shows("historyBubble"));
  click("grewMode");
  click("historyMode");
  EXPECT_FALSE(shows("historyBubble"));
}

TEST_F(HistoryListJourney, the_windows_shortcuts_do_nothing_to_the_item_of_the_hidden_map) {
  scanOn(1700000000);
  machine_.trash.put(tree_.at("film.mp4"));
  session().selection().setFocused(session().navigation().current()->children()[0]);
  click("historyMode");
  tabTo("rowFace");
  press(Qt::Key_Space);
  press(Qt::Key_Y, command);
  press(Qt::Key_L, command);
  press(Qt::Key_Backspace, command);
  EXPECT_THAT(machine_.previewPanel.shown, IsEmpty());
  EXPECT_THAT(session().cleanupQueue().queue(), IsEmpty());
  EXPECT_TRUE(machine_.trash.has(tree_.at("film.mp4")));
}

}  // namespace
}  // namespace tessaly
