#include "app/window/ToastState.h"

#include <chrono>
#include <gtest/gtest.h>

#include <QSignalSpy>

#include "session/SessionFixture_test.h"

namespace tessaly {
namespace {

class ToastStateTest : public SessionFixture {
 protected:
  ToastState state_{session().messages()};
};

TEST_F(ToastStateTest, no_toast_is_shown_at_first) {
  EXPECT_FALSE(state_.isShown());
}

TEST_F(ToastStateTest, the_toast_is_shown_for_its_time) {
  const QSignalSpy changes(&state_, &ToastState::changed);
  session().messages().flash("Hello");
  EXPECT_TRUE(state_.isShown());
  EXPECT_EQ(state_.text(), QStringLiteral("Hello"));
  EXPECT_EQ(changes.count(), 1);
  dispatch().advance(std::chrono::milliseconds(2800));
  runMain();
  EXPECT_FALSE(state_.isShown());
  EXPECT_EQ(state_.text(), QStringLiteral("Hello"));
}

TEST_F(ToastStateTest, the_toast_stays_on_one_line_whatever_a_name_contains) {
  session().messages().flash("Moved caf\xe9\nbar to Trash");
  EXPECT_EQ(state_.text(), QStringLiteral("Moved caf\uFFFD\uFFFDbar to Trash"));
}

}  // namespace
}  // namespace tessaly
