#include <gtest/gtest.h>

#include <QTest>
#include <QWheelEvent>

#include "app/controls/PropertyTable.h"
#include "support/PointerMoves.h"

namespace tessaly {
namespace {

class MarrowScrollArea : public testing::Test {
 protected:
  // Ten buttons of 40 points and a gap of 10: 490 points and the padding, in a height of 200.
  MarrowScrollArea() { scene_.activate(); }

  double scrolled() const { return scene_.read("", "contentY").toDouble(); }
  void press(Qt::Key key) { QTest::keyClick(&scene_.view(), key); }
  void wheel(QPoint pixels, QPoint angle) {
    const QPointF point = scene_.center();
    QWheelEvent event(point, scene_.view().mapToGlobal(point), pixels, angle, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&scene_.view(), &event);
  }

  ControlScene scene_{
      "MarrowScrollArea { width: 200; height: 200; padding: 12; spacing: 10\n"
      "Repeater { model: 10; MarrowButton { width: 100; height: 40; text: index } } }"};
};

TEST_F(MarrowScrollArea, the_content_is_as_high_as_the_column_and_its_padding) {
  expectProperties(scene_, {{"", "contentHeight", 490 + 24}, {"scrollBar", "visible", true}});
}

TEST_F(MarrowScrollArea, the_wheel_scrolls_to_the_ends_and_no_further) {
  wheel({}, {0, -120});
  EXPECT_EQ(scrolled(), 60);
  wheel({0, -25}, {0, -120});
  EXPECT_EQ(scrolled(), 85);
  wheel({}, {0, -1200});
  EXPECT_EQ(scrolled(), 514 - 200);
  wheel({}, {0, 1200});
  EXPECT_EQ(scrolled(), 0);
}

TEST_F(MarrowScrollArea, the_area_scrolls_to_the_focused_item_and_those_above_it) {
  for (int tab = 0; tab < 4; ++tab) press(Qt::Key_Tab);
  EXPECT_EQ(scrolled(), 12 + 3 * 50 + 40 + 12 - 200);
  for (int tab = 0; tab < 6; ++tab) press(Qt::Key_Tab);
  EXPECT_EQ(scrolled(), 514 - 200);
  for (int tab = 0; tab < 7; ++tab)
    QTest::keyClick(&scene_.view(), Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ(scrolled(), 12 + 2 * 50 - 36);
}

TEST_F(MarrowScrollArea, page_keys_home_and_end_scroll) {
  press(Qt::Key_Tab);
  press(Qt::Key_PageDown);
  EXPECT_EQ(scrolled(), 164);
  press(Qt::Key_End);
  EXPECT_EQ(scrolled(), 514 - 200);
  press(Qt::Key_PageUp);
  EXPECT_EQ(scrolled(), 314 - 164);
  press(Qt::Key_Home);
  EXPECT_EQ(scrolled(), 0);
}

TEST_F(MarrowScrollArea, a_click_on_a_visible_item_does_not_scroll) {
  wheel({}, {0, -120});
  QTest::mouseClick(&scene_.view(), Qt::LeftButton, {}, QPoint(60, 45));
  EXPECT_EQ(scrolled(), 60);
}

TEST_F(MarrowScrollArea, a_finger_scrolls_and_dragging_with_the_mouse_does_not) {
  // On a button, and beside it.
  for (const QPoint from : {QPoint(100, 150), QPoint(220, 150)}) {
    pullByMouse(scene_.view(), from, {0, -80});
    EXPECT_EQ(scrolled(), 0);
  }
  pullByFinger(scene_.view(), QPoint(100, 180), {0, -80});
  EXPECT_GT(scrolled(), 20);
  // A press of the mouse stops the movement that the finger started.
  QTest::mousePress(&scene_.view(), Qt::LeftButton, {}, QPoint(220, 150));
  const double place = scrolled();
  QTest::mouseMove(&scene_.view(), QPoint(220, 80));
  QTest::mouseRelease(&scene_.view(), Qt::LeftButton, {}, QPoint(220, 80));
  EXPECT_EQ(scrolled(), place);
}

TEST_F(MarrowScrollArea, the_position_is_limited_again_when_the_area_gets_higher) {
  press(Qt::Key_Tab);
  press(Qt::Key_End);
  scene_.control()->setHeight(400);
  EXPECT_EQ(scrolled(), 514 - 400);
  scene_.control()->setHeight(600);
  EXPECT_EQ(scrolled(), 0);
  EXPECT_FALSE(scene_.find("scrollBar")->isVisible());
}

}  // namespace
}  // namespace tessaly
