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
  EXPECT_THAT(session().selected(), IsEmpty());
  EXPECT_EQ(session().focused()->path(), tree_.at("notes.txt"));
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

}  // namespace
}  // namespace tessaly
