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

TEST_F(AccessControllerTest, construction_probes_and_shows_the_gate_without_access) {
  const AccessController access = make();
  EXPECT_EQ(probes_, 1);
  EXPECT_FALSE(access.isGranted());
  EXPECT_TRUE(access.showGate());
  EXPECT_FALSE(access.needsRelaunch());
  EXPECT_EQ(settings_.boolean("marrow.fullDiskAccessGranted"), std::nullopt);
}

TEST_F(AccessControllerTest, the_gate_is_hidden_with_access_whether_skipped_or_not) {
  isGranted_ = true;
  for (const bool skipped : {false, true}) {
    settings_.setBoolean("marrow.fdaGateSkipped", skipped);
    const AccessController access = make();
    EXPECT_TRUE(access.isGranted());
    EXPECT_FALSE(access.showGate());
    EXPECT_EQ(settings_.boolean("marrow.fullDiskAccessGranted"), true);
  }
}

TEST_F(AccessControllerTest, a_skipped_gate_stays_hidden_and_needs_no_relaunch) {
  settings_.setBoolean("marrow.fdaGateSkipped", true);
  AccessController access = make();
  EXPECT_FALSE(access.showGate());
  access.refresh();
  EXPECT_FALSE(access.needsRelaunch());
}

TEST_F(AccessControllerTest, a_failed_refresh_behind_the_gate_needs_a_relaunch) {
  AccessController access = make();
  const QSignalSpy changes(&access, &AccessController::needsRelaunchChanged);
  access.refresh();
  access.refresh();
  EXPECT_TRUE(access.needsRelaunch());
  EXPECT_EQ(changes.count(), 1);
}

TEST_F(AccessControllerTest, granted_access_hides_the_gate) {
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

TEST_F(AccessControllerTest, granted_access_is_remembered_after_it_is_lost) {
  isGranted_ = true;
  AccessController access = make();
  isGranted_ = false;
  access.refresh();
  EXPECT_FALSE(access.isGranted());
  EXPECT_FALSE(access.showGate());
  EXPECT_EQ(settings_.boolean("marrow.fullDiskAccessGranted"), true);
}

TEST_F(AccessControllerTest, granting_access_needs_a_relaunch) {
  AccessController access = make();
  access.beginGrant();
  EXPECT_TRUE(access.needsRelaunch());
  EXPECT_TRUE(access.showGate());
}

TEST_F(AccessControllerTest, skipping_is_remembered) {
  AccessController access = make();
  access.skip();
  EXPECT_FALSE(access.showGate());
  EXPECT_EQ(settings_.boolean("marrow.fdaGateSkipped"), true);
  EXPECT_FALSE(make().showGate());
}

TEST_F(AccessControllerTest, the_gate_can_be_shown_again_and_then_a_relaunch_is_needed) {
  settings_.setBoolean("marrow.fdaGateSkipped", true);
  AccessController access = make();
  access.setShowGate(true);
  access.refresh();
  EXPECT_TRUE(access.showGate());
  EXPECT_TRUE(access.needsRelaunch());
}

}  // namespace
}  // namespace tessaly
