#include "app/panes/ModeBarState.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include "session/SessionFixture_test.h"

namespace tessaly {
namespace {

class ModeBarStateTest : public SessionFixture {
 protected:
  ModeBarState state_{session()};
};

TEST_F(ModeBarStateTest, offers_nothing_without_a_tree) {
  state_.toggleWatch();
  state_.zipSelected();
  EXPECT_FALSE(state_.canWatch());
  EXPECT_EQ(state_.selectedCount(), 0);
  EXPECT_FALSE(state_.canPutBack());
}

TEST_F(ModeBarStateTest, counts_what_is_selected) {
  const QSignalSpy changes(&state_, &ModeBarState::selectionChanged);
  session().selection().selectNodes({file("/a", 1), file("/b", 1)}, false);
  EXPECT_EQ(state_.selectedCount(), 2);
  session().selection().clearSelection();
  EXPECT_EQ(state_.selectedCount(), 0);
  EXPECT_EQ(changes.count(), 2);
}

TEST_F(ModeBarStateTest, can_put_back_until_it_is_done) {
  const QSignalSpy changes(&state_, &ModeBarState::lastTrashedChanged);
  machine_.trash.put("/data/film");
  session().selection().setFocused(file("/data/film", 1));
  session().trashFocused();
  EXPECT_TRUE(state_.canPutBack());
  session().undoTrash();
  EXPECT_FALSE(state_.canPutBack());
  EXPECT_EQ(changes.count(), 2);
}

TEST_F(ModeBarStateTest, can_watch_once_a_folder_is_on_screen) {
  const QSignalSpy changes(&state_, &ModeBarState::canWatchChanged);
  EXPECT_FALSE(state_.canWatch());
  scanTo(folder("/data", 1, {file("/data/film", 1)}));
  EXPECT_TRUE(state_.canWatch());
  EXPECT_EQ(changes.count(), 1);
}

}  // namespace
}  // namespace tessaly
