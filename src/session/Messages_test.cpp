#include "session/Messages.h"

#include <chrono>
#include <gtest/gtest.h>

#include "support/HandSteppedDispatch.h"

namespace tessaly {
namespace {

using std::chrono::milliseconds;

TEST(MessagesAlone, show_a_toast_for_its_time) {
  HandSteppedDispatch dispatch;
  Messages messages(dispatch);
  messages.flash("a");
  dispatch.advance(milliseconds(2799));
  dispatch.drainAll();
  EXPECT_EQ(messages.toast(), "a");
  dispatch.advance(milliseconds(1));
  dispatch.drainAll();
  EXPECT_EQ(messages.toast(), std::nullopt);
}

TEST(MessagesAlone, tell_the_failure_before_once_the_latest_is_dismissed) {
  HandSteppedDispatch dispatch;
  Messages messages(dispatch);
  messages.tellFailure("first");
  messages.tellFailure("second");
  messages.tellFailure("second");
  EXPECT_EQ(messages.failure(), "second");
  messages.dismissFailure();
  EXPECT_EQ(messages.failure(), "first");
  messages.dismissFailure();
  messages.dismissFailure();
  EXPECT_EQ(messages.failure(), std::nullopt);
}

}  // namespace
}  // namespace tessaly
