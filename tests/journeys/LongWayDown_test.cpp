// A way down to the folder on screen that is longer than the window is wide.
#include <QQuickItem>

#include "journeys/Journey.h"
#include "support/PointerMoves.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

class LongWayDown : public Journey {
 protected:
  LongWayDown()
      : Journey(
            "First-of-the-folders-that-lead-down/\n"
            "  Second-of-the-folders-that-lead-down/\n"
            "    Third-of-the-folders-that-lead-down/\n"
            "      Fourth-of-the-folders-that-lead-down/\n"
            "        Fifth-of-the-folders-that-lead-down/\n"
            "          Sixth-of-the-folders-that-lead-down/\n"
            "            film.mp4 6M\n") {
    session().scanHome();
    finishScan();
    while (session().navigation().current()->children()[0].isDir())
      session().open(session().navigation().current()->children()[0]);
    settle(window());
  }

  // Without the room for focus rings at both ends.
  QRectF sight() { return rectOf(item("crumbs")).adjusted(4, 0, -4, 0); }

  static QRectF rectOf(QQuickItem* item) {
    return item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
  }

  std::vector<QQuickItem*> chips() {
    settle(window());
    return itemsNamed(window().contentItem(), "chip");
  }

  void turnWheel(int degrees) {
    const QPointF point(600, item("crumbs")->mapToScene(QPointF(0, 18)).y());
    tessaly::turnWheel(window(), point, {0, degrees * 8});
    settle(window());
  }
};

TEST_F(LongWayDown, shows_its_end) {
  ASSERT_EQ(chips().size(), 7U);
  EXPECT_TRUE(sight().contains(rectOf(chips().back())));
  EXPECT_LT(rectOf(chips().front()).left(), 0);
}

TEST_F(LongWayDown, keeps_its_end_in_sight_when_the_window_gets_smaller) {
  window().resize(1100, 680);
  settle(window());
  EXPECT_TRUE(sight().contains(rectOf(chips().back())));
}

TEST_F(LongWayDown, is_scrolled_by_the_wheel_as_far_as_it_goes) {
  turnWheel(30);
  EXPECT_GT(rectOf(chips().back()).right(), sight().right());
  turnWheel(3600);
  EXPECT_EQ(rectOf(chips().front()).left(), sight().left());
  turnWheel(-3600);
  EXPECT_EQ(rectOf(chips().back()).right(), sight().right());
}

TEST_F(LongWayDown, comes_into_sight_where_the_keyboard_goes) {
  tabTo("chip");
  for (QQuickItem* chip : chips()) {
    EXPECT_TRUE(chip->hasActiveFocus());
    EXPECT_TRUE(sight().contains(rectOf(chip)));
    press(Qt::Key_Tab);
  }
}

TEST_F(LongWayDown, shows_its_beginning_once_it_fits) {
  press(Qt::Key_Tab);
  session().navigation().jump(1);
  settle(window());
  ASSERT_EQ(chips().size(), 2U);
  EXPECT_EQ(rectOf(chips().front()).left(), sight().left());
}

}  // namespace
}  // namespace tessaly
