#include "app/map/PointerWatch.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>

namespace tessaly {
namespace {

class PointerWatchTest : public ::testing::Test {
 protected:
  PointerWatchTest() : watch_(PointerWatch::of(window_)) {}

  void tellMove(QPointF inWindow, QPointF onScreen) {
    QMouseEvent event(QEvent::MouseMove, inWindow, onScreen, Qt::NoButton, Qt::NoButton,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(&window_, &event);
  }

  QWindow window_;
  PointerWatch& watch_;
};

TEST_F(PointerWatchTest, there_is_one_watch_per_window) {
  EXPECT_EQ(&PointerWatch::of(window_), &watch_);
  QWindow other;
  EXPECT_NE(&PointerWatch::of(other), &watch_);
}

TEST_F(PointerWatchTest, there_is_no_move_before_the_first_event) {
  EXPECT_FALSE(watch_.takeMove());
}

TEST_F(PointerWatchTest, each_move_is_taken_once) {
  tellMove({1, 1}, {101, 101});
  EXPECT_TRUE(watch_.takeMove());
  EXPECT_FALSE(watch_.takeMove());
  tellMove({2, 1}, {102, 101});
  EXPECT_TRUE(watch_.takeMove());
}

TEST_F(PointerWatchTest, an_event_at_the_same_point_is_not_a_move) {
  tellMove({1, 1}, {101, 101});
  tellMove({1, 1}, {101, 101});
  EXPECT_FALSE(watch_.takeMove());
}

TEST_F(PointerWatchTest, a_move_of_the_window_is_not_a_move_of_the_pointer) {
  tellMove({1, 1}, {101, 101});
  tellMove({11, 1}, {101, 101});
  EXPECT_FALSE(watch_.takeMove());
  tellMove({11, 1}, {121, 101});
  EXPECT_FALSE(watch_.takeMove());
}

TEST_F(PointerWatchTest, entering_the_window_is_not_a_move_and_sets_the_position) {
  tellMove({1, 1}, {101, 101});
  QEnterEvent event({5, 5}, {5, 5}, {105, 105});
  QCoreApplication::sendEvent(&window_, &event);
  EXPECT_FALSE(watch_.takeMove());
  tellMove({5, 5}, {105, 105});
  EXPECT_FALSE(watch_.takeMove());
  tellMove({6, 6}, {106, 106});
  EXPECT_TRUE(watch_.takeMove());
}

TEST_F(PointerWatchTest, a_move_that_was_not_taken_is_dropped_at_the_next_event) {
  tellMove({1, 1}, {101, 101});
  QKeyEvent key(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
  QCoreApplication::sendEvent(&window_, &key);
  EXPECT_FALSE(watch_.takeMove());
}

}  // namespace
}  // namespace tessaly
