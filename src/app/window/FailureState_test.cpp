#include "app/window/FailureState.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include "session/SessionFixture_test.h"

namespace tessaly {
namespace {

class FailureStateTest : public SessionFixture {
 protected:
  FailureStateTest() { state_.setSession(&session()); }

  FailureState state_;
};

TEST(FailureStateAlone, shows_nothing) {
  const FailureState state;
  EXPECT_FALSE(state.isShown());
  EXPECT_EQ(state.text(), QString());
  EXPECT_EQ(state.earlier(), QString());
}

TEST_F(FailureStateTest, shows_the_latest_failure_and_counts_those_behind_it) {
  const QSignalSpy changes(&state_, &FailureState::changed);
  session().tellFailure("first");
  EXPECT_TRUE(state_.isShown());
  EXPECT_EQ(state_.text(), QStringLiteral("first"));
  EXPECT_EQ(state_.earlier(), QString());
  session().tellFailure("second");
  session().tellFailure("third");
  EXPECT_EQ(state_.text(), QStringLiteral("third"));
  EXPECT_EQ(state_.earlier(), QStringLiteral("2 earlier"));
  session().dismissFailure();
  EXPECT_EQ(state_.text(), QStringLiteral("second"));
  EXPECT_EQ(state_.earlier(), QStringLiteral("1 earlier"));
  session().dismissFailure();
  session().dismissFailure();
  EXPECT_FALSE(state_.isShown());
  EXPECT_EQ(changes.count(), 6);
}

TEST_F(FailureStateTest, shows_no_name_as_anything_but_a_name) {
  session().tellFailure("“caf\xe9\n\u202Egpj.exe” could not be put back");
  EXPECT_EQ(state_.text(), QStringLiteral("“caf\uFFFD\uFFFD\uFFFDgpj.exe” could not be put back"));
}

}  // namespace
}  // namespace tessaly
