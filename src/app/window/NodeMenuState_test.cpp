#include "app/window/NodeMenuState.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include "session/SessionFixture_test.h"

namespace tessaly {
namespace {

class NodeMenuStateTest : public SessionFixture {
 protected:
  NodeMenuStateTest() { state_.setSession(&session()); }

  NodeMenuState state_;
};

TEST(NodeMenuStateAlone, shows_nothing) {
  NodeMenuState state;
  EXPECT_FALSE(state.isShown());
  EXPECT_EQ(state.title(), QStringLiteral("Item"));
  EXPECT_FALSE(state.node().isValid());
}

TEST_F(NodeMenuStateTest, asks_about_the_node_by_its_name) {
  const QSignalSpy changes(&state_, &NodeMenuState::changed);
  session().setMenuNode(file("/data/caf\xe9", 1));
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
  ASSERT_EQ(session().queue().size(), 1U);
  EXPECT_EQ(session().queue().front().path(), "/data/film");
  session().setMenuNode(film.node());
  state_.trash(film);
  EXPECT_FALSE(machine_.trash.has("/data/film"));
  EXPECT_FALSE(state_.isShown());
}

TEST_F(NodeMenuStateTest, does_nothing_without_a_node) {
  state_.addToQueue(NodeHandle());
  state_.trash(NodeHandle());
  EXPECT_TRUE(session().queue().empty());
  EXPECT_EQ(session().status(), ScanStatus::idle);
}

}  // namespace
}  // namespace tessaly
