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

TEST_F(NodeMenuStateTest, shows_nothing_at_first) {
  EXPECT_FALSE(state_.isShown());
  EXPECT_EQ(state_.title(), QStringLiteral("Item"));
  EXPECT_FALSE(state_.node().isValid());
}

TEST_F(NodeMenuStateTest, asks_about_the_node_by_its_name) {
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

TEST_F(NodeMenuStateTest, queues_and_throws_away_the_node_that_was_asked_about) {
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

TEST_F(NodeMenuStateTest, does_nothing_without_a_node) {
  state_.addToQueue(NodeHandle());
  state_.trash(NodeHandle());
  EXPECT_TRUE(session().cleanupQueue().queue().empty());
  EXPECT_EQ(session().run().status(), ScanStatus::idle);
}

}  // namespace
}  // namespace tessaly
