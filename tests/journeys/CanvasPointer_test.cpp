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

TEST_F(CanvasPointer, takes_two_quick_clicks_for_two) {
  const std::string notes = tree_.at("notes.txt");
  clickTwice(tilePoint("notes.txt"));
  EXPECT_THAT(workspace_.revealed, ElementsAre(ElementsAre(notes), ElementsAre(notes)));
  EXPECT_FALSE(isZoomed());
}

TEST_F(CanvasPointer, takes_two_quick_clicks_with_shift_for_in_and_out) {
  QTest::mouseDClick(&window(), Qt::LeftButton, Qt::ShiftModifier, tilePoint("notes.txt"));
  EXPECT_THAT(session().selection().selected(), IsEmpty());
  EXPECT_EQ(session().selection().focused()->path(), tree_.at("notes.txt"));
}

TEST_F(CanvasPointer, enlarges_no_window_by_quick_clicks_between_the_tiles) {
  QQuickItem* const canvas = item("canvas");
  clickTwice(canvas->mapToScene(QPointF(1, canvas->height() / 2)).toPoint());
  EXPECT_FALSE(isZoomed());
  EXPECT_THAT(workspace_.revealed, IsEmpty());
}

TEST_F(CanvasPointer, moves_no_window_by_a_drag) {
  const QPoint before = window().position();
  const QPoint from = tilePoint("notes.txt");
  QTest::mousePress(&window(), Qt::LeftButton, Qt::NoModifier, from);
  QTest::mouseMove(&window(), from + QPoint(30, 0));
  QTest::mouseMove(&window(), from + QPoint(60, 20));
  QTest::mouseRelease(&window(), Qt::LeftButton, Qt::NoModifier, from + QPoint(60, 20));
  settle(window());
  EXPECT_EQ(window().position(), before);
}

TEST_F(CanvasPointer, keeps_the_focus_on_its_item_through_all_that_comes_under_it) {
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
  // The bar of the way back comes, and moves the map down.
  session().open(session().navigation().current()->children()[0]);
  settle(window());
  EXPECT_EQ(focused(), notes);
  session().navigation().back();
  settle(window());
  session().shown().setVizMode(VizMode::list);
  settle(window());
  session().shown().setVizMode(VizMode::treemap);
  settle(window());
  EXPECT_EQ(focused(), notes);
  session().rescan();
  finishScan();
  EXPECT_EQ(focused(), notes);
}

TEST_F(CanvasPointer, focuses_what_is_under_it_when_it_moves_again) {
  hoverAt(tilePoint("notes.txt"));
  session().open(session().navigation().current()->children()[0]);
  settle(window());
  EXPECT_EQ(focused(), tree_.at("notes.txt"));
  moveTo(tilePoint("Movies/beach.mp4"));
  EXPECT_EQ(focused(), tree_.at("Movies/beach.mp4"));
  EXPECT_TRUE(shows("mapTooltip"));
}

TEST_F(CanvasPointer, gives_no_focus_when_what_lay_over_the_map_goes_by_a_key) {
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
