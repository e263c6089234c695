// The toast at the bottom of the window does not block the pointer.
#include <gmock/gmock.h>

#include <QTest>

#include "app/map/TreemapSurface.h"
#include "journeys/Journey.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class ToastJourney : public Journey {
 protected:
  ToastJourney()
      : Journey(
            "Movies/\n"
            "  beach.mp4 6M\n"
            "notes.txt 2M\n") {
    session().scanHome();
    finishScan();
    // Away from the position of an earlier test's pointer.
    hoverAt(QPoint(640, 5));
  }

  QRectF toast() {
    QQuickItem* const panel = item("toastPanel");
    if (panel == nullptr) return {};
    EXPECT_EQ(panel->opacity(), 1);
    return panel->mapRectToScene(QRectF(0, 0, panel->width(), panel->height()));
  }
  // Points on the symbol, on the text, and on the panel around them.
  std::vector<QPoint> points() {
    const QRectF panel = toast();
    return {middleOf(item("toastSymbol")), middleOf(item("toast")),
            QPointF(panel.left() + 5, panel.top() + 4).toPoint()};
  }
  // The item of the tile at this point of the window.
  std::string under(QPoint point) {
    auto* const canvas = qobject_cast<TreemapSurface*>(item("canvas"));
    if (canvas == nullptr) return "no canvas";
    const auto index = canvas->tiles().at(canvas->mapFromScene(QPointF(point)));
    return index ? canvas->tiles()[*index].rect.node.path() : "no tile";
  }
};

TEST_F(ToastJourney, the_toast_lets_a_click_through_to_the_tile_under_it) {
  session().messages().flash("Hello");
  for (const QPoint point : points()) {
    ASSERT_EQ(under(point), tree_.at("Movies/beach.mp4"));
    workspace_.revealed.clear();
    clickAt(point);
    EXPECT_THAT(workspace_.revealed, ElementsAre(ElementsAre(under(point))));
  }
  EXPECT_EQ(text("toast"), QStringLiteral("Hello"));
}

TEST_F(ToastJourney, the_toast_lets_clicks_with_shift_and_command_through) {
  session().messages().flash("Hello");
  clickHolding(Qt::ShiftModifier, points().front());
  EXPECT_THAT(session().selection().selected(), ElementsAre(tree_.at("Movies/beach.mp4")));
  clickHolding(Qt::ControlModifier, points().front());
  ASSERT_THAT(session().cleanupQueue().queue(), SizeIs(1));
  EXPECT_EQ(session().cleanupQueue().queue().front().path(), tree_.at("Movies/beach.mp4"));
}

TEST_F(ToastJourney, the_toast_lets_hovering_and_the_right_button_through) {
  session().messages().flash("Hello");
  const QPoint point = points()[1];
  ASSERT_FALSE(session().selection().focused().has_value());
  hoverAt(point);
  ASSERT_TRUE(session().selection().focused().has_value());
  EXPECT_EQ(session().selection().focused()->path(), under(point));
  EXPECT_TRUE(shows("mapTooltip"));
  QTest::mouseClick(&window(), Qt::RightButton, Qt::NoModifier, point);
  EXPECT_TRUE(shows("tileReveal"));
}

TEST_F(ToastJourney, a_band_can_begin_under_the_toast) {
  session().messages().flash("Hello");
  const QPoint from = points().back();
  const QPoint to = from - QPoint(60, 60);
  QTest::mouseMove(&window(), from);
  QTest::mousePress(&window(), Qt::LeftButton, Qt::NoModifier, from);
  QTest::mouseMove(&window(), from - QPoint(30, 30));
  QTest::mouseMove(&window(), to);
  QTest::mouseRelease(&window(), Qt::LeftButton, Qt::NoModifier, to);
  settle(window());
  EXPECT_THAT(session().selection().selected(), ElementsAre(tree_.at("Movies/beach.mp4")));
}

TEST_F(ToastJourney, a_long_toast_lets_clicks_through_to_the_buttons_under_it) {
  session().cleanupQueue().addToQueue(session().navigation().current()->children()[1]);
  session().messages().flash(std::string(400, 'W'));
  const QPoint clear = middleOf(item("clear"));
  ASSERT_TRUE(toast().contains(clear));
  clickAt(clear);
  EXPECT_THAT(session().cleanupQueue().queue(), IsEmpty());
  EXPECT_FALSE(session().cleanupQueue().queueOpen());
}

TEST_F(ToastJourney, tab_reaches_nothing_in_the_toast) {
  session().messages().flash("Hello");
  const QQuickItem* const panel = item("toastPanel");
  press(Qt::Key_Tab);
  QQuickItem* const first = window().activeFocusItem();
  for (int stop = 0; stop < 200; ++stop) {
    ASSERT_NE(window().activeFocusItem(), nullptr);
    EXPECT_FALSE(panel == window().activeFocusItem() ||
                 panel->isAncestorOf(window().activeFocusItem()));
    press(Qt::Key_Tab);
    if (window().activeFocusItem() == first) return;
  }
  ADD_FAILURE() << "Tab does not return to the first control";
}

// In contrast to the toast, a failure stays until it is dismissed by its button.
TEST_F(ToastJourney, the_toast_stays_when_the_line_of_a_failure_is_dismissed) {
  session().messages().tellFailure("Something did not move");
  session().messages().flash("Hello");
  click("dismissFailure");
  EXPECT_THAT(session().messages().failures(), IsEmpty());
  EXPECT_FALSE(shows("failureLine"));
  EXPECT_EQ(text("toast"), QStringLiteral("Hello"));
}

}  // namespace
}  // namespace tessaly
