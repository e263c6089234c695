#include "app/overlays/AccessGateActions.h"

#include <gmock/gmock.h>

#include <QSignalSpy>

#include "app/overlays/AccessGate_test.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class AccessGateActionsTest : public testing::Test, protected AccessGateFixture {};

TEST_F(AccessGateActionsTest, granting_reveals_the_program_and_then_opens_the_settings) {
  // Both are shown before the views are told that a relaunch is needed.
  std::size_t shownBefore = 0;
  QObject::connect(&access, &AccessController::needsRelaunchChanged, [&] {
    shownBefore = workspace.revealed.size() + workspace.settingsAsked.size();
  });
  workspace.settingsPage = std::string(FullDiskAccess::settingsPages.front());
  actions.grant();
  EXPECT_THAT(workspace.revealed, ElementsAre(ElementsAre("/opt/tessaly")));
  EXPECT_THAT(workspace.settingsAsked, ElementsAre(workspace.settingsPage));
  EXPECT_TRUE(access.needsRelaunch());
  EXPECT_EQ(shownBefore, 2U);
  EXPECT_EQ(probes, 1);
}

TEST_F(AccessGateActionsTest, granting_twice_announces_the_start_once) {
  const QSignalSpy changes(&actions, &AccessGateActions::hasBegunChanged);
  EXPECT_FALSE(actions.hasBegun());
  actions.refresh();
  EXPECT_FALSE(actions.hasBegun());
  actions.grant();
  actions.grant();
  EXPECT_TRUE(actions.hasBegun());
  EXPECT_EQ(changes.count(), 1);
  EXPECT_EQ(workspace.revealed.size(), 2U);
}

TEST_F(AccessGateActionsTest, relaunch_starts_one_instance_however_often_it_is_called) {
  actions.relaunch();
  actions.relaunch();
  EXPECT_THAT(done, ElementsAre("give up", "start /opt/tessaly"));
  dispatch.advanceToNextDue();
  dispatch.drainAll();
  EXPECT_THAT(done, ElementsAre("give up", "start /opt/tessaly", "quit"));
  EXPECT_FALSE(dispatch.advanceToNextDue());
}

TEST_F(AccessGateActionsTest, relaunch_starts_another_instance_if_quitting_was_refused) {
  actions.relaunch();
  dispatch.advanceToNextDue();
  dispatch.drainAll();
  actions.relaunch();
  EXPECT_EQ(done.size(), 5U);
}

TEST_F(AccessGateActionsTest, quitting_works_even_if_the_object_is_gone_by_then) {
  {
    AccessGateActions shortLived(
        {.access = access,
         .workspace = workspace,
         .relaunch = {.dispatch = dispatch,
                      .giveUpInstance = {},
                      .quit = [this] { done.emplace_back("quit"); },
                      .application = "/opt/tessaly",
                      .launch = [](const Process::Launch&) -> Outcome { return succeeded(); }}});
    shortLived.relaunch();
  }
  dispatch.advanceToNextDue();
  dispatch.drainAll();
  EXPECT_THAT(done, ElementsAre("quit"));
}

TEST_F(AccessGateActionsTest, refresh_checks_access_again_and_skip_closes_the_gate) {
  actions.refresh();
  EXPECT_EQ(probes, 2);
  EXPECT_TRUE(access.needsRelaunch());
  actions.skip();
  EXPECT_FALSE(access.showGate());
  EXPECT_EQ(settings.boolean("marrow.fdaGateSkipped"), true);
  EXPECT_THAT(done, IsEmpty());
}

}  // namespace
}  // namespace tessaly
