// A window without a frame: this code moves and resizes it if the desktop does not.
#include "app/window/WindowChrome.h"

#include <gtest/gtest.h>
#include <memory>

#include <QCoreApplication>
#include <QQuickWindow>
#include <QTest>

#include "app/window/WindowEdges.h"
#include "app/window/WindowMover.h"

namespace tessaly {
namespace {

class FramelessWindow : public ::testing::Test {
 protected:
  FramelessWindow() {
    window_.setMinimumSize({300, 200});
    window_.setGeometry(100, 80, 400, 300);
    mover_.setParentItem(window_.contentItem());
    edges_.setParentItem(window_.contentItem());
    for (QQuickItem* item : {static_cast<QQuickItem*>(&mover_), static_cast<QQuickItem*>(&edges_)})
      item->setSize(QSizeF(400, 300));
    window_.show();
    QCoreApplication::processEvents();
  }

  // Presses at `from`, a point of the window, drags by `by`, and releases.
  void pull(QPoint from, QPoint by) {
    const QPoint stood = window_.position();
    send(QEvent::MouseButtonPress, from, stood + from, Qt::LeftButton);
    for (int step = 1; step <= 4; ++step) {
      const QPoint way = by * step / 4;
      send(QEvent::MouseMove, from, stood + from + way, Qt::LeftButton);
    }
    send(QEvent::MouseButtonRelease, from, stood + from + by, Qt::NoButton);
  }

  void send(QEvent::Type type, QPoint inWindow, QPoint onScreen, Qt::MouseButton held) {
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, inWindow, onScreen, button, held, Qt::NoModifier);
    QCoreApplication::sendEvent(&window_, &event);
  }

  QQuickWindow window_;
  WindowMover mover_;
  WindowEdges edges_;
};

TEST(WindowChromeTest, the_frame_is_removed_from_the_window) {
  WindowChrome chrome;
  QQuickWindow window;
  chrome.setParentItem(window.contentItem());
  window.show();
  EXPECT_TRUE(QTest::qWaitFor([&] { return window.flags().testFlag(Qt::FramelessWindowHint); }));
  EXPECT_EQ(window.color(), QColor("#1E1E1E"));
}

TEST_F(FramelessWindow, the_background_moves_the_window) {
  pull({200, 150}, {40, -24});
  EXPECT_EQ(window_.geometry(), QRect(140, 56, 400, 300));
}

TEST_F(FramelessWindow, a_press_that_hardly_moves_does_not_move_the_window) {
  pull({200, 150}, {2, 1});
  EXPECT_EQ(window_.geometry(), QRect(100, 80, 400, 300));
}

TEST_F(FramelessWindow, a_double_click_on_the_title_bar_zooms_the_window_and_back) {
  mover_.setProperty("titleHeight", 44);
  QTest::mouseDClick(&window_, Qt::LeftButton, Qt::NoModifier, {200, 43});
  EXPECT_TRUE(window_.windowStates().testFlag(Qt::WindowMaximized));
  mover_.zoom();
  EXPECT_FALSE(window_.windowStates().testFlag(Qt::WindowMaximized));
}

TEST_F(FramelessWindow, a_double_click_elsewhere_is_two_presses) {
  mover_.setProperty("titleHeight", 44);
  QTest::mouseDClick(&window_, Qt::LeftButton, Qt::NoModifier, {200, 45});
  EXPECT_FALSE(window_.windowStates().testFlag(Qt::WindowMaximized));
  const QPoint stood = window_.position();
  const QPoint at(200, 150);
  send(QEvent::MouseButtonPress, at, stood + at, Qt::LeftButton);
  send(QEvent::MouseButtonRelease, at, stood + at, Qt::NoButton);
  send(QEvent::MouseButtonPress, at, stood + at, Qt::LeftButton);
  send(QEvent::MouseButtonDblClick, at, stood + at, Qt::LeftButton);
  send(QEvent::MouseMove, at, stood + at + QPoint(30, 20), Qt::LeftButton);
  send(QEvent::MouseButtonRelease, at, stood + at + QPoint(30, 20), Qt::NoButton);
  EXPECT_EQ(window_.position(), stood + QPoint(30, 20));
}

TEST_F(FramelessWindow, each_edge_and_corner_resizes_the_window) {
  struct Case {
    QPoint at;
    QPoint by;
    QRect expected;
  };
  for (const Case& c : {Case{{2, 150}, {-20, 7}, {80, 80, 420, 300}},
                        Case{{398, 150}, {20, 7}, {100, 80, 420, 300}},
                        Case{{200, 2}, {7, -20}, {100, 60, 400, 320}},
                        Case{{200, 298}, {7, 20}, {100, 80, 400, 320}},
                        Case{{2, 2}, {-20, -12}, {80, 68, 420, 312}},
                        Case{{390, 2}, {20, -12}, {100, 68, 420, 312}},
                        Case{{2, 292}, {-20, 12}, {80, 80, 420, 312}},
                        Case{{398, 298}, {20, 12}, {100, 80, 420, 312}}}) {
    window_.setGeometry(100, 80, 400, 300);
    QCoreApplication::processEvents();
    pull(c.at, c.by);
    EXPECT_EQ(window_.geometry(), c.expected) << "at " << c.at.x() << ", " << c.at.y();
  }
}

TEST_F(FramelessWindow, resizing_to_the_smallest_size_keeps_the_opposite_edge) {
  pull({2, 2}, {300, 300});
  EXPECT_EQ(window_.geometry(), QRect(200, 180, 300, 200));
  window_.setGeometry(100, 80, 400, 300);
  QCoreApplication::processEvents();
  pull({398, 298}, {-300, -300});
  EXPECT_EQ(window_.geometry(), QRect(100, 80, 300, 200));
}

TEST_F(FramelessWindow, presses_away_from_the_edges_reach_the_items) {
  EXPECT_FALSE(edges_.contains({200, 150}));
  EXPECT_FALSE(edges_.contains({5, 150}));
  EXPECT_TRUE(edges_.contains({4.9, 150}));
  EXPECT_TRUE(edges_.contains({399, 299}));
  EXPECT_FALSE(edges_.contains({-1, 150}));
  window_.showMaximized();
  EXPECT_FALSE(edges_.contains({2, 150}));
}

}  // namespace
}  // namespace tessaly
