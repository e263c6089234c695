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

TEST_F(ModeBarStateTest, without_a_tree_no_action_is_available) {
  state_.toggleWatch();
  state_.zipSelected();
  EXPECT_FALSE(state_.canWatch());
  EXPECT_FALSE(state_.hasSelection());
  EXPECT_FALSE(state_.canPutBack());
}

TEST_F(ModeBarStateTest, the_texts_contain_the_number_of_selected_items) {
  const QSignalSpy changes(&state_, &ModeBarState::selectionChanged);
  session().selection().selectNodes({file("/a", 1), file("/b", 1)}, false);
  EXPECT_TRUE(state_.hasSelection());
  EXPECT_EQ(state_.queueText(), "Queue (2)");
  EXPECT_EQ(state_.zipText(), "Zip (2)");
  session().selection().clearSelection();
  EXPECT_FALSE(state_.hasSelection());
  EXPECT_EQ(changes.count(), 2);
}

TEST_F(ModeBarStateTest, a_move_to_the_trash_can_be_put_back_once) {
  const QSignalSpy changes(&state_, &ModeBarState::lastTrashedChanged);
  machine_.trash.put("/data/film");
  session().selection().setFocused(file("/data/film", 1));
  session().trashFocused();
  EXPECT_TRUE(state_.canPutBack());
  session().undoTrash();
  EXPECT_FALSE(state_.canPutBack());
  EXPECT_EQ(changes.count(), 2);
}

TEST_F(ModeBarStateTest, added_actions_are_announced_and_removed_or_replaced_ones_are_not) {
  const QSignalSpy added(&state_, &ModeBarState::actionsAdded);
  session().selection().selectNodes({file("/a", 1), file("/b", 1)}, false);
  EXPECT_EQ(added.count(), 1);
  session().selection().toggleSelect(file("/a", 1));
  EXPECT_EQ(added.count(), 1);
  machine_.trash.put("/data/film");
  session().selection().setFocused(file("/data/film", 1));
  session().trashFocused();
  const auto actions = added.count();
  EXPECT_TRUE(state_.canPutBack());
  session().selection().clearSelection();
  session().undoTrash();
  EXPECT_EQ(added.count(), actions);
  session().selection().selectNodes({file("/b", 1)}, false);
  EXPECT_EQ(added.count(), actions + 1);
}

TEST_F(ModeBarStateTest, the_texts_say_whether_heat_map_and_watch_are_on) {
  scanTo(folder("/data", 1, {file("/data/film", 1)}));
  const QSignalSpy heat(&state_, &ModeBarState::heatmapTextChanged);
  const QSignalSpy watch(&state_, &ModeBarState::watchTextChanged);
  EXPECT_EQ(state_.heatmapText(), "Age");
  EXPECT_EQ(state_.watchText(), "Watch");
  session().shown().setHeatmap(true);
  state_.toggleWatch();
  EXPECT_EQ(state_.heatmapText(), "Age Heatmap");
  EXPECT_EQ(state_.watchText(), "Watching");
  EXPECT_EQ(heat.count(), 1);
  EXPECT_EQ(watch.count(), 1);
  state_.toggleWatch();
  EXPECT_EQ(state_.watchText(), "Watch");
}

TEST_F(ModeBarStateTest, a_folder_on_screen_can_be_watched) {
  const QSignalSpy changes(&state_, &ModeBarState::canWatchChanged);
  EXPECT_FALSE(state_.canWatch());
  scanTo(folder("/data", 1, {file("/data/film", 1)}));
  EXPECT_TRUE(state_.canWatch());
  EXPECT_EQ(changes.count(), 1);
}

}  // namespace
}  // namespace tessaly
