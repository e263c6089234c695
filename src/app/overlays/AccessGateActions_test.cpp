#include "app/overlays/AccessGateActions.h"

#include <gmock/gmock.h>

#include <QSignalSpy>

#include "app/overlays/AccessGate_test.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class AccessGateActionsTest : public testing::Test, protected AccessGateFixture {};

TEST_F(AccessGateActionsTest, granting_shows_the_program_then_the_settings) {
  // Both are there as soon as the views hear that a new start is needed.
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

TEST_F(AccessGateActionsTest, granting_has_begun_once_and_stays_so) {
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

TEST_F(AccessGateActionsTest, starts_anew_once_however_often_it_is_asked) {
  actions.relaunch();
  actions.relaunch();
  EXPECT_THAT(done, ElementsAre("give up", "start /opt/tessaly"));
  dispatch.advanceToNextDue();
  dispatch.drainAll();
  EXPECT_THAT(done, ElementsAre("give up", "start /opt/tessaly", "quit"));
  EXPECT_FALSE(dispatch.advanceToNextDue());
}

TEST_F(AccessGateActionsTest, starts_anew_again_when_nobody_let_it_quit) {
  actions.relaunch();
  dispatch.advanceToNextDue();
  dispatch.drainAll();
  actions.relaunch();
  EXPECT_EQ(done.size(), 5U);
}

TEST_F(AccessGateActionsTest, quits_even_when_it_is_gone_by_then) {
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

TEST_F(AccessGateActionsTest, looks_again_and_goes_on_without) {
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
