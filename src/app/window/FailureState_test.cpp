#include "app/window/FailureState.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include "session/SessionFixture_test.h"

namespace tessaly {
namespace {

class FailureStateTest : public SessionFixture {
 protected:
  FailureState state_{session().messages()};
};

TEST_F(FailureStateTest, no_failure_is_shown_at_first) {
  EXPECT_FALSE(state_.isShown());
  EXPECT_EQ(state_.text(), QString());
  EXPECT_EQ(state_.earlier(), QString());
}

TEST_F(FailureStateTest, the_latest_failure_is_shown_with_the_number_of_earlier_ones) {
  const QSignalSpy changes(&state_, &FailureState::changed);
  session().messages().tellFailure("first");
  EXPECT_TRUE(state_.isShown());
  EXPECT_EQ(state_.text(), QStringLiteral("first"));
  EXPECT_EQ(state_.earlier(), QString());
  session().messages().tellFailure("second");
  session().messages().tellFailure("third");
  EXPECT_EQ(state_.text(), QStringLiteral("third"));
  EXPECT_EQ(state_.earlier(), QStringLiteral("2 earlier"));
  session().messages().dismissFailure();
  EXPECT_EQ(state_.text(), QStringLiteral("second"));
  EXPECT_EQ(state_.earlier(), QStringLiteral("1 earlier"));
  session().messages().dismissFailure();
  session().messages().dismissFailure();
  EXPECT_FALSE(state_.isShown());
  EXPECT_EQ(changes.count(), 6);
}

TEST_F(FailureStateTest, names_in_a_failure_are_shown_as_plain_text) {
  session().messages().tellFailure("“caf\xe9\n\u202Egpj.exe” could not be put back");
  EXPECT_EQ(state_.text(), QStringLiteral("“caf\uFFFD\uFFFD\uFFFDgpj.exe” could not be put back"));
}

}  // namespace
}  // namespace tessaly
