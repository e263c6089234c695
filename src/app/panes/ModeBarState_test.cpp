#include "app/panes/ModeBarState.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include "session/SessionFixture_test.h"

namespace tessaly {
namespace {

class ModeBarStateTest : public SessionFixture {
 protected:
  ModeBarStateTest() { state_.setSession(&session()); }

  ModeBarState state_;
};

TEST(ModeBarStateAlone, offers_nothing) {
  const ModeBarState state;
  EXPECT_FALSE(state.showsTreemap());
  EXPECT_EQ(state.selectedCount(), 0);
  EXPECT_FALSE(state.canPutBack());
}

TEST_F(ModeBarStateTest, counts_what_is_selected) {
  const QSignalSpy changes(&state_, &ModeBarState::selectionChanged);
  session().selectNodes({file("/a", 1), file("/b", 1)}, false);
  EXPECT_EQ(state_.selectedCount(), 2);
  session().clearSelection();
  EXPECT_EQ(state_.selectedCount(), 0);
  EXPECT_EQ(changes.count(), 2);
}

TEST_F(ModeBarStateTest, can_put_back_until_it_is_done) {
  const QSignalSpy changes(&state_, &ModeBarState::lastTrashedChanged);
  machine_.trash.put("/data/film");
  session().setFocused(file("/data/film", 1));
  session().trashFocused();
  EXPECT_TRUE(state_.canPutBack());
  session().undoTrash();
  EXPECT_FALSE(state_.canPutBack());
  EXPECT_EQ(changes.count(), 2);
}

TEST_F(ModeBarStateTest, goes_back_to_the_treemap) {
  session().setVizMode(VizMode::compare);
  EXPECT_FALSE(state_.showsTreemap());
  const QSignalSpy changes(&state_, &ModeBarState::modeChanged);
  state_.showTreemap();
  EXPECT_TRUE(state_.showsTreemap());
  EXPECT_EQ(changes.count(), 1);
}

}  // namespace
}  // namespace tessaly
