#include "app/window/ProtectedLocationState.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include "session/SessionFixture_test.h"

namespace tessaly {
namespace {

class ProtectedLocationStateTest : public SessionFixture {
 protected:
  ProtectedLocationStateTest() { state_.setSession(&session()); }

  ProtectedLocationState state_;
};

TEST(ProtectedLocationStateAlone, shows_nothing) {
  const ProtectedLocationState state;
  EXPECT_FALSE(state.isShown());
  EXPECT_EQ(state.message(), QString());
}

TEST_F(ProtectedLocationStateTest, gives_the_reason_and_the_path) {
  const QSignalSpy changes(&state_, &ProtectedLocationState::changed);
  session().setCriticalWarning(folder("/home/user", 1));
  EXPECT_TRUE(state_.isShown());
  EXPECT_EQ(state_.message(), QStringLiteral("Your home folder\n\n/home/user"));
  session().setCriticalWarning(folder("/usr/lib", 1));
  EXPECT_EQ(state_.message(), QStringLiteral("Protected location\n\n/usr/lib"));
  session().dismissWarning();
  EXPECT_FALSE(state_.isShown());
  EXPECT_EQ(changes.count(), 3);
}

TEST_F(ProtectedLocationStateTest, keeps_a_name_with_line_breaks_from_looking_like_a_reason) {
  session().setCriticalWarning(folder("/usr/lib\nSafe to remove", 1));
  EXPECT_EQ(state_.message(), QStringLiteral("Protected location\n\n/usr/lib\uFFFDSafe to remove"));
}

}  // namespace
}  // namespace tessaly
