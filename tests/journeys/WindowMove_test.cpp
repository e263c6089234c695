// The window is moved by dragging its background, and dragging with the mouse scrolls nothing.
#include <QMouseEvent>
#include <QQuickItem>
#include <QTest>

#include "journeys/Journey.h"
#include "support/PointerMoves.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

class WindowMove : public Journey {
 protected:
  WindowMove()
      : Journey(
            "First-of-the-folders-that-lead-down/\n"
            "  Second-of-the-folders-that-lead-down/\n"
            "    Third-of-the-folders-that-lead-down/\n"
            "      Fourth-of-the-folders-that-lead-down/\n"
            "        Fifth-of-the-folders-that-lead-down/\n"
            "          Sixth-of-the-folders-that-lead-down/\n"
            "            film.mp4 6M\n"
            "notes.txt 2M\n") {
    window().setPosition(100, 80);
    window().resize(1100, 680);
    settle(window());
  }

  void scan() {
    session().scanHome();
    finishScan();
  }
  // Drills in so far that neither breadcrumbs nor modes fit.
  void goDown() {
    scan();
    while (session().navigation().current()->children()[0].isDir())
      session().open(session().navigation().current()->children()[0]);
    session().selection().selectNodes({session().navigation().current()->children()[0]}, false);
    settle(window());
  }

  double scrolled(const QString& name, const char* axis) {
    return item(name)->property(axis).toDouble();
  }

  QPoint at(const QString& name, QPointF point) { return item(name)->mapToScene(point).toPoint(); }
  QPoint rightEnd(const QString& name) {
    QQuickItem* const found = item(name);
    return found->mapToScene(QPointF(found->width() - 2, found->height() / 2)).toPoint();
  }

  void send(QEvent::Type type, QPoint inWindow, QPoint onScreen, Qt::MouseButtons held) {
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, inWindow, onScreen, button, held, Qt::NoModifier);
    QCoreApplication::sendEvent(&window(), &event);
  }

  // Drags from a point of the window with the mouse, and returns how far the window has moved.
  QPoint pull(QPoint from, QPoint by) {
    const QPoint stood = window().position();
    send(QEvent::MouseButtonPress, from, stood + from, Qt::LeftButton);
    for (int step = 1; step <= 8; ++step) {
      const QPoint onScreen = stood + from + by * step / 8;
      send(QEvent::MouseMove, onScreen - window().position(), onScreen, Qt::LeftButton);
    }
    const QPoint end = stood + from + by;
    send(QEvent::MouseButtonRelease, end - window().position(), end, Qt::NoButton);
    settle(window());
    return window().position() - stood;
  }

  void pullByFinger(QPoint from, QPoint by) {
    tessaly::pullByFinger(window(), from, by);
    settle(window());
  }
  void turnWheel(QPoint point, QPoint angle) {
    tessaly::turnWheel(window(), point, angle);
    settle(window());
  }

  void clickTwice(QPoint point) {
    QTest::mouseDClick(&window(), Qt::LeftButton, Qt::NoModifier, point);
    settle(window());
  }
  bool isZoomed() { return window().windowStates().testFlag(Qt::WindowMaximized); }

  static constexpr QPoint way{-40, 24};
};

TEST_F(WindowMove, the_title_bar_moves_the_window) {
  EXPECT_EQ(pull({270, 22}, way), way);
}

TEST_F(WindowMove, the_sidebar_moves_the_window) {
  scan();
  // A heading, the gauge in its card, the space between the sections, and the background at the
  // edge.
  EXPECT_EQ(pull(middleOf(itemNamed(item("quickActionsSection"), "headerTitle")), way), way);
  EXPECT_EQ(pull(middleOf(item("gauge")), way), way);
  EXPECT_EQ(pull(at("driveCard", {20, -6}), way), way);
  EXPECT_EQ(pull(at("scrollArea", {6, 300}), way), way);
  EXPECT_EQ(pull(at("bottomScanFooter", {6, 20}), way), way);
}

TEST_F(WindowMove, the_row_of_modes_moves_the_window) {
  scan();
  EXPECT_EQ(pull(at("modeBar", {4, 20}), way), way);
  window().resize(1440, 900);
  EXPECT_EQ(pull(rightEnd("modeScroller"), way), way);
}

TEST_F(WindowMove, the_row_of_modes_moves_the_window_if_it_is_too_long) {
  goDown();
  QQuickItem* const scroller = item("modeScroller");
  ASSERT_GT(scroller->property("contentWidth").toDouble(), scroller->width());
  QQuickItem* const pill = item("historyMode");
  const QPoint beside = pill->mapToScene(QPointF(pill->width() + 3, pill->height() / 2)).toPoint();
  EXPECT_EQ(pull(beside, way), way);
}

TEST_F(WindowMove, the_breadcrumbs_move_the_window) {
  scan();
  session().open(session().navigation().current()->children()[0]);
  settle(window());
  EXPECT_EQ(pull(rightEnd("crumbs"), way), way);
}

TEST_F(WindowMove, the_breadcrumbs_move_the_window_if_they_are_too_long) {
  goDown();
  QQuickItem* const last = itemsNamed(window().contentItem(), "chip").back();
  EXPECT_EQ(pull(last->mapToScene(QPointF(-10, last->height() / 2)).toPoint(), way), way);
}

TEST_F(WindowMove, the_areas_above_and_beside_the_map_move_the_window) {
  scan();
  EXPECT_EQ(pull(middleOf(itemNamed(item("header"), "size")), way), way);
  EXPECT_EQ(pull(at("canvas", {-5, 100}), way), way);
}

TEST_F(WindowMove, the_first_screen_and_panes_move_the_window) {
  EXPECT_EQ(pull(at("idleScreen", {40, 40}), way), way);
  session().shown().setPane(MainPane::apps);
  settle(window());
  EXPECT_EQ(pull(at("apps", {200, 200}), way), way);
}

TEST_F(WindowMove, controls_that_use_a_drag_do_not_move_the_window) {
  scan();
  EXPECT_EQ(pull(middleOf(item("scanHome")), way), QPoint());
  EXPECT_EQ(pull(middleOf(item("listMode")), way), QPoint());
  EXPECT_EQ(pull(middleOf(item("canvas")), way), QPoint());
}

TEST_F(WindowMove, a_drag_with_the_mouse_scrolls_nothing) {
  goDown();
  const double crumbs = scrolled("crumbs", "contentX");
  const double modes = scrolled("modeScroller", "contentX");
  ASSERT_GT(crumbs, 0);
  ASSERT_GT(modes, 0);
  ASSERT_GT(item("scrollArea")->property("contentHeight").toDouble(), item("scrollArea")->height());
  for (const QPoint by : {QPoint(0, -200), QPoint(200, 0)}) {
    // On the background, and on a button.
    pull(at("scrollArea", {6, 300}), by);
    pull(middleOf(item("scanHome")), by);
    pull(rightEnd("modeScroller"), by);
    pull(middleOf(item("historyMode")), by);
    pull(rightEnd("crumbs"), by);
    pull(middleOf(itemsNamed(window().contentItem(), "chip").back()), by);
  }
  EXPECT_EQ(scrolled("scrollArea", "contentY"), 0);
  EXPECT_EQ(scrolled("modeScroller", "contentX"), modes);
  EXPECT_EQ(scrolled("crumbs", "contentX"), crumbs);
}

TEST_F(WindowMove, a_finger_scrolls_instead_of_moving_the_window) {
  goDown();
  const QPoint stood = window().position();
  const double crumbs = scrolled("crumbs", "contentX");
  const double modes = scrolled("modeScroller", "contentX");
  pullByFinger(at("scrollArea", {40, 400}), {0, -200});
  EXPECT_GT(scrolled("scrollArea", "contentY"), 100);
  pullByFinger(at("modeScroller", {100, 20}), {200, 0});
  EXPECT_LT(scrolled("modeScroller", "contentX"), modes);
  pullByFinger(at("crumbs", {100, 18}), {200, 0});
  EXPECT_LT(scrolled("crumbs", "contentX"), crumbs);
  EXPECT_EQ(window().position(), stood);
  // A flick goes on for a while after the finger has left.
  ASSERT_TRUE(QTest::qWaitFor([&] { return !item("scrollArea")->property("moving").toBool(); }));
  // The mouse moves the window again.
  const double sidebar = scrolled("scrollArea", "contentY");
  EXPECT_EQ(pull(at("scrollArea", {6, 300}), way), way);
  EXPECT_EQ(scrolled("scrollArea", "contentY"), sidebar);
}

TEST_F(WindowMove, the_wheel_scrolls_sidebar_modes_and_breadcrumbs) {
  goDown();
  turnWheel(at("scrollArea", {40, 300}), {0, -120});
  EXPECT_EQ(scrolled("scrollArea", "contentY"), 60);
  for (const QString& name : {QStringLiteral("modeScroller"), QStringLiteral("crumbs")}) {
    const double end = scrolled(name, "contentX");
    turnWheel(at(name, {100, 18}), {0, 120});
    const double back = scrolled(name, "contentX");
    EXPECT_LT(back, end) << name.toStdString();
    turnWheel(at(name, {100, 18}), {120, 0});
    EXPECT_LT(scrolled(name, "contentX"), back) << name.toStdString();
  }
}

TEST_F(WindowMove, a_double_click_on_the_title_bar_zooms_the_window) {
  clickTwice({270, 22});
  EXPECT_TRUE(isZoomed());
}

TEST_F(WindowMove, a_double_click_elsewhere_does_not_zoom) {
  goDown();
  for (const QPoint point :
       {rightEnd("crumbs"), at("scrollArea", {6, 300}), middleOf(item("gauge")),
        at("modeBar", {4, 20}), middleOf(itemNamed(item("header"), "size")),
        at("canvas", {-5, 100})}) {
    clickTwice(point);
    EXPECT_FALSE(isZoomed()) << "at " << point.x() << ", " << point.y();
  }
}

}  // namespace
}  // namespace tessaly
