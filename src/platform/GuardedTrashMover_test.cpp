#include "platform/GuardedTrashMover.h"

#include <cerrno>
#include <gtest/gtest.h>
#include <latch>
#include <memory>
#include <string>
#include <thread>
#include <utility>

namespace tessaly {
namespace {

// Blocks inside each move until the test releases it.
class SlowMover final : public TrashMover {
 public:
  Result<ItemInTrash> moveToTrash(const std::string& path) override {
    take();
    return ItemInTrash{.path = "/trash" + path, .identity = {}};
  }
  Outcome putBack(const ItemInTrash&, const std::string&) override {
    take();
    return succeeded();
  }

  std::latch begun{1};
  std::latch go{1};
  int taken = 0;

 private:
  void take() {
    ++taken;
    begun.count_down();
    go.wait();
  }
};

class GuardedTrashMoverTest : public testing::Test {
 protected:
  GuardedTrashMoverTest() {
    auto mover = std::make_unique<SlowMover>();
    slow_ = mover.get();
    guard_ = std::make_unique<GuardedTrashMover>(std::move(mover));
  }

  SlowMover* slow_ = nullptr;
  std::unique_ptr<GuardedTrashMover> guard_;
};

TEST_F(GuardedTrashMoverTest, the_guard_returns_the_result_of_its_mover) {
  slow_->go.count_down();
  EXPECT_EQ(guard_->moveToTrash("/a").value().path, "/trash/a");
}

TEST_F(GuardedTrashMoverTest, a_move_is_reported_as_running_until_it_has_ended) {
  EXPECT_FALSE(guard_->isMoving());
  bool hasMoved = false;
  std::thread worker([&] { hasMoved = guard_->moveToTrash("/a").ok(); });
  slow_->begun.wait();
  EXPECT_TRUE(guard_->isMoving());
  // Closing does not cancel the move.
  guard_->close();
  EXPECT_TRUE(guard_->isMoving());
  slow_->go.count_down();
  worker.join();
  EXPECT_FALSE(guard_->isMoving());
  EXPECT_TRUE(hasMoved);
}

TEST_F(GuardedTrashMoverTest, no_move_begins_after_the_guard_was_closed) {
  slow_->go.count_down();
  guard_->close();
  const auto moved = guard_->moveToTrash("/a");
  ASSERT_FALSE(moved.ok());
  EXPECT_EQ(moved.error().code, ECANCELED);
  EXPECT_EQ(moved.error().path, "/a");
  const Outcome back = guard_->putBack({.path = "/trash/a", .identity = {}}, "/a");
  ASSERT_FALSE(back.ok());
  EXPECT_EQ(back.error().code, ECANCELED);
  EXPECT_EQ(slow_->taken, 0);
  EXPECT_FALSE(guard_->isMoving());
}

}  // namespace
}  // namespace tessaly
