// Clicks in quick succession on the map.
#include <gmock/gmock.h>

#include <QTest>

#include "journeys/Journey.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class CanvasPointer : public Journey {
 protected:
  CanvasPointer()
      : Journey(
            "Movies/\n"
            "  beach.mp4 6M\n"
            "notes.txt 2M\n") {
    session().scanHome();
    finishScan();
  }

  void clickTwice(QPoint point, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseDClick(&window(), button, Qt::NoModifier, point);
    settle(window());
  }
  void moveTo(QPoint point) {
    QTest::mouseMove(&window(), point);
    settle(window());
  }
  std::string focused() {
    return session().selection().focused() ? session().selection().focused()->path()
                                           : std::string();
  }
  bool isZoomed() { return window().windowStates().testFlag(Qt::WindowMaximized); }
};

TEST_F(CanvasPointer, two_quick_clicks_on_the_map_are_two_clicks) {
  const std::string notes = tree_.at("notes.txt");
  clickTwice(tilePoint("notes.txt"));
  EXPECT_THAT(workspace_.revealed, ElementsAre(ElementsAre(notes), ElementsAre(notes)));
  EXPECT_FALSE(isZoomed());
}

TEST_F(CanvasPointer, two_quick_clicks_with_shift_select_and_deselect) {
  QTest::mouseDClick(&window(), Qt::LeftButton, Qt::ShiftModifier, tilePoint("notes.txt"));
  EXPECT_THAT(session().selection().selected(), IsEmpty());
  EXPECT_EQ(session().selection().focused()->path(), tree_.at("notes.txt"));
}

TEST_F(CanvasPointer, quick_clicks_between_the_tiles_do_not_zoom_the_window) {
  QQuickItem* const canvas = item("canvas");
  clickTwice(canvas->mapToScene(QPointF(1, canvas->height() / 2)).toPoint());
  EXPECT_FALSE(isZoomed());
  EXPECT_THAT(workspace_.revealed, IsEmpty());
}

TEST_F(CanvasPointer, a_drag_on_the_map_does_not_move_the_window) {
  const QPoint before = window().position();
  const QPoint from = tilePoint("notes.txt");
  QTest::mousePress(&window(), Qt::LeftButton, Qt::NoModifier, from);
  QTest::mouseMove(&window(), from + QPoint(30, 0));
  QTest::mouseMove(&window(), from + QPoint(60, 20));
  QTest::mouseRelease(&window(), Qt::LeftButton, Qt::NoModifier, from + QPoint(60, 20));
  settle(window());
  EXPECT_EQ(window().position(), before);
}

TEST_F(CanvasPointer, the_focus_stays_on_its_item_while_other_tiles_come_under_the_pointer) {
  const QPoint place = tilePoint("Movies");
  clickAt(place);
  ASSERT_EQ(session().navigation().stack().size(), 2U);
  EXPECT_EQ(focused(), tree_.at("Movies"));
  EXPECT_FALSE(shows("mapTooltip"));
  press(Qt::Key_BracketLeft, Qt::ControlModifier);
  ASSERT_EQ(session().navigation().stack().size(), 1U);
  EXPECT_EQ(focused(), tree_.at("Movies"));

  hoverAt(tilePoint("notes.txt"));
  const std::string notes = tree_.at("notes.txt");
  ASSERT_EQ(focused(), notes);
  session().shown().setHeatmap(true);
  settle(window());
  EXPECT_EQ(focused(), notes);
  window().resize(1100, 680);
  settle(window());
  EXPECT_EQ(focused(), notes);
  window().resize(1280, 820);
  settle(window());
  // The breadcrumbs appear and move the map down.
  session().open(session().navigation().current()->children()[0]);
  settle(window());
  EXPECT_EQ(focused(), notes);
  session().navigation().back();
  settle(window());
  session().shown().setVizMode(VizMode::duplicates);
  settle(window());
  session().shown().setVizMode(VizMode::treemap);
  settle(window());
  EXPECT_EQ(focused(), notes);
  session().rescan();
  finishScan();
  EXPECT_EQ(focused(), notes);
}

TEST_F(CanvasPointer, the_next_move_of_the_pointer_focuses_the_tile_under_it) {
  hoverAt(tilePoint("notes.txt"));
  session().open(session().navigation().current()->children()[0]);
  settle(window());
  EXPECT_EQ(focused(), tree_.at("notes.txt"));
  moveTo(tilePoint("Movies/beach.mp4"));
  EXPECT_EQ(focused(), tree_.at("Movies/beach.mp4"));
  EXPECT_TRUE(shows("mapTooltip"));
}

TEST_F(CanvasPointer, the_pointer_gets_no_focus_when_a_key_closes_what_covered_the_map) {
  const QPoint movies = tilePoint("Movies");
  hoverAt(tilePoint("notes.txt"));
  session().shown().setMenuNode(session().navigation().current()->children()[1]);
  settle(window());
  moveTo(movies);
  press(Qt::Key_Escape);
  ASSERT_FALSE(shows("nodeMenu"));
  settle(window());
  EXPECT_EQ(focused(), tree_.at("notes.txt"));
  moveTo(movies + QPoint(1, 0));
  EXPECT_EQ(focused(), tree_.at("Movies"));
}

}  // namespace
}  // namespace tessaly
