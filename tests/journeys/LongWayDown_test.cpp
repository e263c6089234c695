// Breadcrumbs of a deep folder, which are longer than the window is wide.
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

  // The visible area without the space for focus rings at both ends.
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

TEST_F(LongWayDown, long_breadcrumbs_show_their_end) {
  ASSERT_EQ(chips().size(), 7U);
  EXPECT_TRUE(sight().contains(rectOf(chips().back())));
  EXPECT_LT(rectOf(chips().front()).left(), 0);
}

TEST_F(LongWayDown, long_breadcrumbs_keep_their_end_visible_when_the_window_shrinks) {
  window().resize(1100, 680);
  settle(window());
  EXPECT_TRUE(sight().contains(rectOf(chips().back())));
}

TEST_F(LongWayDown, the_wheel_scrolls_long_breadcrumbs_to_their_ends) {
  turnWheel(30);
  EXPECT_GT(rectOf(chips().back()).right(), sight().right());
  turnWheel(3600);
  EXPECT_EQ(rectOf(chips().front()).left(), sight().left());
  turnWheel(-3600);
  EXPECT_EQ(rectOf(chips().back()).right(), sight().right());
}

TEST_F(LongWayDown, long_breadcrumbs_scroll_to_the_keyboard_focus) {
  tabTo("chip");
  for (QQuickItem* chip : chips()) {
    EXPECT_TRUE(chip->hasActiveFocus());
    EXPECT_TRUE(sight().contains(rectOf(chip)));
    press(Qt::Key_Tab);
  }
}

TEST_F(LongWayDown, long_breadcrumbs_show_their_beginning_once_they_fit) {
  press(Qt::Key_Tab);
  session().navigation().jump(1);
  settle(window());
  ASSERT_EQ(chips().size(), 2U);
  EXPECT_EQ(rectOf(chips().front()).left(), sight().left());
}

}  // namespace
}  // namespace tessaly
