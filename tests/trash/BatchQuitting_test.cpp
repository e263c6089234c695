// Quitting while a batch moves to a real Trash on a real thread.
#include <condition_variable>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "platform/GuardedTrashMover.h"
#include "platform/ThreadedDispatch.h"
#include "support/Eventually.h"
#include "support/MainLoop.h"
#include "support/PlainFiles.h"
#include "trash/SessionOnDisk.h"

namespace tessaly {
namespace {

using testing::ElementsAre;

// Moves nothing until it is opened, and counts how many moves wait.
class Gate {
 public:
  void pass() {
    std::unique_lock lock(mutex_);
    ++waiting_;
    opened_.wait(lock, [this] { return isOpen_; });
    --waiting_;
  }
  void open() {
    const std::lock_guard lock(mutex_);
    isOpen_ = true;
    opened_.notify_all();
  }
  int waiting() const {
    const std::lock_guard lock(mutex_);
    return waiting_;
  }

 private:
  mutable std::mutex mutex_;
  std::condition_variable opened_;
  int waiting_ = 0;
  bool isOpen_ = false;
};

class QuittingABatch : public testing::Test {
 protected:
  QuittingABatch() {
    disk_.tree.plant("here", "a 4K\nb 4K\nc 4K\n");
    session_.moveBatch(listed({disk_.at("a"), disk_.at("b"), disk_.at("c")}),
                       [this](const TrashBatch::Moved&) { hasEnded_ = true; });
    eventually([this] { return gate_.waiting() == 1; }, "the second move");
  }
  ~QuittingABatch() override { gate_.open(); }

  // The second of three items waits at the gate.
  std::unique_ptr<TrashMover> heldAtTheGate() {
    auto held = std::make_unique<WatchedMover>(disk_.mover());
    held->before = [this](const std::string& path) {
      if (path == disk_.at("b")) gate_.pass();
    };
    return held;
  }
  // Complete pairs of an item and its record.
  void expectInTrash(const std::vector<std::string>& names) {
    EXPECT_THAT(disk_.files(), testing::UnorderedElementsAreArray(names));
    EXPECT_EQ(disk_.infos().size(), names.size());
    for (const std::string& name : names) {
      EXPECT_EQ(recordedPath(disk_.homeTrash() + "/files/" + name), disk_.at(name));
      EXPECT_FALSE(isThere(disk_.at(name))) << name;
    }
  }

  TrashOnDisk disk_;
  Gate gate_;
  FakeMachine machine_;
  MainLoop mainLoop_;
  GuardedTrashMover mover_{heldAtTheGate()};
  ThreadedDispatch dispatch_{[this](Dispatch::Work work) { mainLoop_.post(std::move(work)); }};
  ScanSession session_{servicesWith(machine_, mover_, dispatch_)};
  bool hasEnded_ = false;
};

TEST_F(QuittingABatch, the_end_of_the_session_does_not_wait_for_the_move_under_way) {
  session_.end();
  EXPECT_EQ(gate_.waiting(), 1);
  expectInTrash({"a"});
  EXPECT_TRUE(isThere(disk_.at("b")));
}

// As the program quits: it ends as soon as nothing moves any more.
TEST_F(QuittingABatch, the_move_under_way_gets_its_record_before_the_process_may_end) {
  session_.end();
  mover_.close();
  dispatch_.close();
  EXPECT_TRUE(mover_.isMoving());
  gate_.open();
  eventually([this] { return !mover_.isMoving(); }, "the move under way");
  expectInTrash({"a", "b"});
  EXPECT_THAT(entriesOf(disk_.at("")), ElementsAre("c"));
}

TEST_F(QuittingABatch, the_rest_of_the_batch_stays_even_if_the_process_goes_on) {
  session_.end();
  gate_.open();
  dispatch_.close();
  eventually([this] { return dispatch_.isAtRest(); }, "the end of the batch");
  expectInTrash({"a", "b"});
  EXPECT_THAT(entriesOf(disk_.at("")), ElementsAre("c"));
  mainLoop_.runPosted();
  EXPECT_FALSE(hasEnded_);
}

}  // namespace
}  // namespace tessaly
