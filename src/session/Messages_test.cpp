#include "session/Messages.h"

#include <chrono>
#include <gtest/gtest.h>

#include "support/HandSteppedDispatch.h"

namespace tessaly {
namespace {

using std::chrono::milliseconds;

TEST(MessagesAlone, a_toast_is_shown_for_its_time) {
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

TEST(MessagesAlone, dismissing_a_failure_shows_the_previous_one) {
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
