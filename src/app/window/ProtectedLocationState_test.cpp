#include "app/window/ProtectedLocationState.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include "session/SessionFixture_test.h"

namespace tessaly {
namespace {

class ProtectedLocationStateTest : public SessionFixture {
 protected:
  ProtectedLocationState state_{session().removal(), session().homeDirectory()};
};

TEST_F(ProtectedLocationStateTest, no_warning_is_shown_at_first) {
  EXPECT_FALSE(state_.isShown());
  EXPECT_EQ(state_.message(), QString());
}

TEST_F(ProtectedLocationStateTest, the_warning_has_the_reason_and_the_path) {
  const QSignalSpy changes(&state_, &ProtectedLocationState::changed);
  session().removal().setCriticalWarning(folder("/home/user", 1));
  EXPECT_TRUE(state_.isShown());
  EXPECT_EQ(state_.message(), QStringLiteral("Your home folder\n\n/home/user"));
  session().removal().setCriticalWarning(folder("/usr/lib", 1));
  EXPECT_EQ(state_.message(), QStringLiteral("Protected location\n\n/usr/lib"));
  session().removal().dismissWarning();
  EXPECT_FALSE(state_.isShown());
  EXPECT_EQ(changes.count(), 3);
}

TEST_F(ProtectedLocationStateTest, a_name_with_line_breaks_cannot_look_like_a_reason) {
  session().removal().setCriticalWarning(folder("/usr/lib\nSafe to remove", 1));
  EXPECT_EQ(state_.message(), QStringLiteral("Protected location\n\n/usr/lib\uFFFDSafe to remove"));
}

}  // namespace
}  // namespace tessaly
