#include "app/window/NodeMenuState.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include "session/SessionFixture_test.h"

namespace tessaly {
namespace {

class NodeMenuStateTest : public SessionFixture {
 protected:
  NodeMenuState state_{session()};
};

TEST_F(NodeMenuStateTest, the_menu_is_hidden_at_first) {
  EXPECT_FALSE(state_.isShown());
  EXPECT_EQ(state_.title(), QStringLiteral("Item"));
  EXPECT_FALSE(state_.node().isValid());
}

TEST_F(NodeMenuStateTest, the_menu_has_the_name_of_its_node_as_title) {
  const QSignalSpy changes(&state_, &NodeMenuState::changed);
  session().shown().setMenuNode(file("/data/caf\xe9", 1));
  EXPECT_TRUE(state_.isShown());
  EXPECT_EQ(state_.title(), QStringLiteral("caf\uFFFD"));
  EXPECT_EQ(state_.node().node()->path(), "/data/caf\xe9");
  state_.dismiss();
  EXPECT_FALSE(state_.isShown());
  EXPECT_EQ(state_.title(), QStringLiteral("Item"));
  EXPECT_EQ(changes.count(), 2);
}

TEST_F(NodeMenuStateTest, the_node_is_queued_or_moved_to_the_trash) {
  machine_.trash.put("/data/film");
  const NodeHandle film(file("/data/film", 1));
  state_.addToQueue(film);
  ASSERT_EQ(session().cleanupQueue().queue().size(), 1U);
  EXPECT_EQ(session().cleanupQueue().queue().front().path(), "/data/film");
  session().shown().setMenuNode(film.node());
  state_.trash(film);
  EXPECT_FALSE(machine_.trash.has("/data/film"));
  EXPECT_FALSE(state_.isShown());
}

TEST_F(NodeMenuStateTest, actions_do_nothing_for_a_handle_without_a_node) {
  state_.addToQueue(NodeHandle());
  state_.trash(NodeHandle());
  EXPECT_TRUE(session().cleanupQueue().queue().empty());
  EXPECT_EQ(session().run().status(), ScanStatus::idle);
}

}  // namespace
}  // namespace tessaly
