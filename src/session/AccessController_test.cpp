#include "session/AccessController.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include "support/MemorySettings.h"

namespace tessaly {
namespace {

class AccessControllerTest : public ::testing::Test {
 protected:
  AccessController make() {
    return {settings_, [this] {
              ++probes_;
              return isGranted_;
            }};
  }

  MemorySettings settings_;
  bool isGranted_ = false;
  int probes_ = 0;
};

TEST_F(AccessControllerTest, probes_when_it_is_made_and_shows_the_gate_without_access) {
  const AccessController access = make();
  EXPECT_EQ(probes_, 1);
  EXPECT_FALSE(access.isGranted());
  EXPECT_TRUE(access.showGate());
  EXPECT_FALSE(access.needsRelaunch());
  EXPECT_EQ(settings_.boolean("marrow.fullDiskAccessGranted"), std::nullopt);
}

TEST_F(AccessControllerTest, shows_no_gate_with_access_whether_it_was_skipped_or_not) {
  isGranted_ = true;
  for (const bool skipped : {false, true}) {
    settings_.setBoolean("marrow.fdaGateSkipped", skipped);
    const AccessController access = make();
    EXPECT_TRUE(access.isGranted());
    EXPECT_FALSE(access.showGate());
    EXPECT_EQ(settings_.boolean("marrow.fullDiskAccessGranted"), true);
  }
}

TEST_F(AccessControllerTest, shows_no_gate_and_never_asks_for_a_new_start_once_skipped) {
  settings_.setBoolean("marrow.fdaGateSkipped", true);
  AccessController access = make();
  EXPECT_FALSE(access.showGate());
  access.refresh();
  EXPECT_FALSE(access.needsRelaunch());
}

TEST_F(AccessControllerTest, needs_a_new_start_from_the_first_refresh_that_fails_behind_the_gate) {
  AccessController access = make();
  const QSignalSpy changes(&access, &AccessController::needsRelaunchChanged);
  access.refresh();
  access.refresh();
  EXPECT_TRUE(access.needsRelaunch());
  EXPECT_EQ(changes.count(), 1);
}

TEST_F(AccessControllerTest, takes_the_gate_away_once_access_is_granted) {
  AccessController access = make();
  access.refresh();
  isGranted_ = true;
  const QSignalSpy changes(&access, &AccessController::showGateChanged);
  access.refresh();
  EXPECT_TRUE(access.isGranted());
  EXPECT_FALSE(access.showGate());
  EXPECT_FALSE(access.needsRelaunch());
  EXPECT_EQ(changes.count(), 1);
  EXPECT_EQ(settings_.boolean("marrow.fullDiskAccessGranted"), true);
}

TEST_F(AccessControllerTest, remembers_that_access_was_granted_after_it_is_lost) {
  isGranted_ = true;
  AccessController access = make();
  isGranted_ = false;
  access.refresh();
  EXPECT_FALSE(access.isGranted());
  EXPECT_FALSE(access.showGate());
  EXPECT_EQ(settings_.boolean("marrow.fullDiskAccessGranted"), true);
}

TEST_F(AccessControllerTest, needs_a_new_start_while_the_user_grants_access) {
  AccessController access = make();
  access.beginGrant();
  EXPECT_TRUE(access.needsRelaunch());
  EXPECT_TRUE(access.showGate());
}

TEST_F(AccessControllerTest, remembers_that_the_user_went_on_without) {
  AccessController access = make();
  access.skip();
  EXPECT_FALSE(access.showGate());
  EXPECT_EQ(settings_.boolean("marrow.fdaGateSkipped"), true);
  EXPECT_FALSE(make().showGate());
}

TEST_F(AccessControllerTest, can_be_asked_for_the_gate_again_and_then_waits_for_a_new_start) {
  settings_.setBoolean("marrow.fdaGateSkipped", true);
  AccessController access = make();
  access.setShowGate(true);
  access.refresh();
  EXPECT_TRUE(access.showGate());
  EXPECT_TRUE(access.needsRelaunch());
}

}  // namespace
}  // namespace tessaly
