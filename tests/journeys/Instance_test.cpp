// Starts of the built program, one after the other and at the same time.
#include <csignal>
#include <gtest/gtest.h>

#include "journeys/ProgramOnDesktop.h"

namespace tessaly {
namespace {

using InstanceTest = ProgramOnDesktop;

TEST_F(InstanceTest, a_second_start_exits_with_0_and_leaves_the_first_one_running) {
  Process& first = start();
  ASSERT_TRUE(comesUp());
  EXPECT_EQ(startAgain(), Process::Exit{});
  EXPECT_TRUE(isRunning(first));
}

TEST_F(InstanceTest, a_second_start_shows_the_window_of_a_hidden_instance) {
  startHidden();
  startNotificationArea();
  Process& first = start();
  ASSERT_TRUE(hasAnswered(1));
  EXPECT_FALSE(shows(server_.look()));
  EXPECT_EQ(startAgain(), Process::Exit{});
  EXPECT_TRUE(comesUp());
  EXPECT_TRUE(isRunning(first));
}

TEST_F(InstanceTest, a_hidden_start_shows_its_window_without_a_notification_area) {
  startHidden();
  start();
  EXPECT_TRUE(comesUp());
}

TEST_F(InstanceTest, the_hot_key_shows_the_window) {
  startHidden();
  startNotificationArea();
  start();
  ASSERT_TRUE(hasAnswered(1));
  server_.pressKeys("ctrl+shift+space");
  EXPECT_TRUE(comesUp());
}

TEST_F(InstanceTest, a_start_after_a_killed_instance_has_a_window) {
  startNotificationArea();
  Process& first = start();
  ASSERT_TRUE(comesUp());
  ASSERT_TRUE(hasAnswered(1));
  ASSERT_EQ(::kill(programBehind(items_.front()), SIGKILL), 0);
  first.waitUntil(Deadline::never());
  ASSERT_TRUE(goesAway());
  start();
  EXPECT_TRUE(comesUp());
}

}  // namespace
}  // namespace tessaly
