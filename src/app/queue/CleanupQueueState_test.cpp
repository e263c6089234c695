#include "app/queue/CleanupQueueState.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

#include <QSignalSpy>

#include "session/SessionFixture_test.h"

namespace tessaly {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

class CleanupQueueStateTest : public SessionFixture {
 protected:
  std::string moveText() const { return state_.moveText().toStdString(); }

  CleanupQueueState state_{session()};
};

TEST_F(CleanupQueueStateTest, an_empty_queue_is_hidden_and_does_nothing) {
  EXPECT_EQ(state_.look(), CleanupQueueState::Hidden);
  EXPECT_EQ(state_.countText(), "0");
  EXPECT_EQ(state_.headerName(), "Cleanup Queue, 0 items, expanded");
  EXPECT_EQ(state_.moveText(), QStringLiteral("Move 0 to Trash · 0 B"));
  state_.toggleMinimized();
  state_.remove(NodeHandle(file("/a", 1)));
  state_.clear();
  state_.zipThenTrash();
  state_.moveToTrash();
}

TEST_F(CleanupQueueStateTest, the_panel_is_hidden_open_or_minimised) {
  const struct {
    bool open;
    bool minimized;
    CleanupQueueState::Look look;
  } rows[] = {{false, false, CleanupQueueState::Hidden},
              {false, true, CleanupQueueState::Hidden},
              {true, false, CleanupQueueState::Open},
              {true, true, CleanupQueueState::Minimized}};
  for (const auto& row : rows) {
    session().cleanupQueue().setQueueOpen(row.open);
    session().cleanupQueue().setQueueMinimized(row.minimized);
    EXPECT_EQ(state_.look(), row.look);
  }
}

TEST_F(CleanupQueueStateTest, the_panel_expands_on_every_addition) {
  const QSignalSpy changes(&state_, &CleanupQueueState::lookChanged);
  session().cleanupQueue().addToQueue(file("/a", 1));
  EXPECT_EQ(state_.look(), CleanupQueueState::Open);
  EXPECT_EQ(changes.count(), 1);
  state_.toggleMinimized();
  EXPECT_EQ(state_.look(), CleanupQueueState::Minimized);
  EXPECT_EQ(changes.count(), 2);
  session().cleanupQueue().addToQueue(file("/a", 1));
  EXPECT_EQ(state_.look(), CleanupQueueState::Minimized);
  session().cleanupQueue().addToQueue(file("/b", 1));
  EXPECT_EQ(state_.look(), CleanupQueueState::Open);
  state_.toggleMinimized();
  state_.toggleMinimized();
  EXPECT_EQ(state_.look(), CleanupQueueState::Open);
}

TEST_F(CleanupQueueStateTest, the_button_shows_the_total_size_without_a_plural) {
  const QSignalSpy changes(&state_, &CleanupQueueState::queueChanged);
  session().cleanupQueue().addToQueue(file("/a", 1536));
  EXPECT_EQ(moveText(), "Move 1 to Trash · 1.5 KB");
  session().cleanupQueue().addToQueue(file("/b", 1LL << 30U));
  EXPECT_EQ(moveText(), "Move 2 to Trash · 1.0 GB");
  EXPECT_EQ(state_.countText(), "2");
  session().cleanupQueue().removeFromQueue("/b");
  EXPECT_EQ(moveText(), "Move 1 to Trash · 1.5 KB");
  EXPECT_EQ(changes.count(), 3);
}

TEST_F(CleanupQueueStateTest, counts_have_no_digit_grouping) {
  std::vector<DiskNode> nodes;
  for (int i = 0; i < 1234; ++i) nodes.push_back(file("/data/" + std::to_string(i), 1));
  session().selection().selectNodes(nodes, false);
  session().queueSelected();
  EXPECT_EQ(state_.countText(), "1234");
  EXPECT_EQ(moveText(), "Move 1234 to Trash · 1.2 KB");
}

TEST_F(CleanupQueueStateTest, the_largest_sum_is_added_and_an_overflow_ends_the_program) {
  session().cleanupQueue().addToQueue(file("/a", std::numeric_limits<std::int64_t>::max() - 1));
  session().cleanupQueue().addToQueue(file("/b", 1));
  EXPECT_EQ(moveText(), "Move 2 to Trash · 8192.0 PB");
  session().cleanupQueue().addToQueue(file("/c", 1));
  EXPECT_DEATH(state_.moveText(), "overflow");
}

TEST_F(CleanupQueueStateTest, the_accessible_name_of_the_header_has_the_count_and_the_state) {
  const QSignalSpy changes(&state_, &CleanupQueueState::headerNameChanged);
  session().cleanupQueue().addToQueue(file("/a", 1));
  EXPECT_EQ(state_.headerName(), "Cleanup Queue, 1 item, expanded");
  session().cleanupQueue().addToQueue(file("/b", 1));
  state_.toggleMinimized();
  EXPECT_EQ(state_.headerName(), "Cleanup Queue, 2 items, minimised");
  EXPECT_EQ(changes.count(), 3);
}

TEST_F(CleanupQueueStateTest, items_are_removed_by_the_bytes_of_their_path) {
  session().cleanupQueue().addToQueue(file("/caf\xE9", 1));
  session().cleanupQueue().addToQueue(file("/caf\xE8", 1));
  state_.remove(NodeHandle(file("/caf\xE9", 1)));
  ASSERT_THAT(session().cleanupQueue().queue(), SizeIs(1));
  EXPECT_EQ(session().cleanupQueue().queue().front().path(), "/caf\xE8");
  state_.remove(NodeHandle());
  EXPECT_THAT(session().cleanupQueue().queue(), SizeIs(1));
  state_.remove(NodeHandle(file("/caf\xE8", 1)));
  EXPECT_EQ(state_.look(), CleanupQueueState::Hidden);
  session().cleanupQueue().addToQueue(file("/again", 1));
  EXPECT_EQ(state_.look(), CleanupQueueState::Open);
}

TEST_F(CleanupQueueStateTest, each_item_has_one_row_in_the_order_of_adding) {
  const QSignalSpy removals(state_.rows(), &NodeRows::rowsRemoved);
  for (const char* path : {"/b", "/a", "/c", "/b"})
    session().cleanupQueue().addToQueue(file(path, 1));
  session().cleanupQueue().removeFromQueue("/a");
  const auto path = [](NodeRows& rows, int row) {
    return rows.data(rows.index(row), NodeRows::NodeRole).value<NodeHandle>().node()->path();
  };
  ASSERT_EQ(state_.rows()->rowCount(), 2);
  EXPECT_EQ(path(*state_.rows(), 0), "/b");
  EXPECT_EQ(path(*state_.rows(), 1), "/c");
  EXPECT_EQ(removals.count(), 1);
  CleanupQueueState other(session());
  EXPECT_EQ(other.rows()->rowCount(), 2);
}

TEST_F(CleanupQueueStateTest, adding_a_selection_and_clearing_are_one_change_each) {
  std::vector<DiskNode> nodes;
  for (int i = 0; i < 100; ++i) nodes.push_back(file("/data/" + std::to_string(i), 1));
  session().selection().selectNodes(nodes, false);
  const QSignalSpy insertions(state_.rows(), &NodeRows::rowsInserted);
  const QSignalSpy removals(state_.rows(), &NodeRows::rowsRemoved);
  session().queueSelected();
  EXPECT_EQ(state_.rows()->rowCount(), 100);
  EXPECT_EQ(insertions.count(), 1);
  session().cleanupQueue().clearQueue();
  EXPECT_EQ(state_.rows()->rowCount(), 0);
  EXPECT_EQ(removals.count(), 1);
}

TEST_F(CleanupQueueStateTest, clearing_moves_nothing) {
  machine_.trash.put("/a");
  session().cleanupQueue().addToQueue(file("/a", 1));
  state_.toggleMinimized();
  state_.clear();
  EXPECT_EQ(state_.look(), CleanupQueueState::Hidden);
  EXPECT_THAT(session().cleanupQueue().queue(), IsEmpty());
  EXPECT_TRUE(session().cleanupQueue().queueMinimized());
  EXPECT_TRUE(machine_.trash.has("/a"));
}

TEST_F(CleanupQueueStateTest, emptying_moves_all_items_to_the_trash) {
  machine_.trash.put("/a");
  session().cleanupQueue().addToQueue(file("/a", 1));
  session().cleanupQueue().addToQueue(file("/gone", 1));
  state_.moveToTrash();
  EXPECT_EQ(state_.look(), CleanupQueueState::Hidden);
  EXPECT_THAT(session().cleanupQueue().queue(), IsEmpty());
  EXPECT_FALSE(machine_.trash.has("/a"));
  EXPECT_THAT(session().removal().lastTrashed(), SizeIs(1));
}

}  // namespace
}  // namespace tessaly
