#include "session/Jobs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "support/HandSteppedDispatch.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Queue = Dispatch::Queue;

// An owner that writes down what it is given.
class JobsTest : public testing::Test {
 protected:
  Job start(const std::string& result) {
    return jobs_->start(
        Queue::utility,
        [this, result](const Job& job) {
          sawCancelled_.push_back(job.isCancelled());
          return result;
        },
        [this](const std::string& taken) { taken_.push_back(taken); });
  }

  HandSteppedDispatch dispatch_;
  std::unique_ptr<Jobs> jobs_ = std::make_unique<Jobs>(dispatch_);
  std::vector<bool> sawCancelled_;
  std::vector<std::string> taken_;
};

TEST_F(JobsTest, run_on_the_given_queue_and_bring_their_result_to_the_main_queue) {
  start("a");
  dispatch_.drain(Queue::main);
  dispatch_.drain(Queue::userInitiated);
  EXPECT_THAT(sawCancelled_, IsEmpty());
  dispatch_.drain(Queue::utility);
  EXPECT_THAT(sawCancelled_, ElementsAre(false));
  EXPECT_THAT(taken_, IsEmpty());
  dispatch_.drain(Queue::main);
  EXPECT_THAT(taken_, ElementsAre("a"));
}

TEST_F(JobsTest, are_numbered_in_the_order_of_their_start) {
  EXPECT_EQ(Job().number(), 0U);
  EXPECT_EQ(start("a").number(), 1U);
  EXPECT_EQ(start("b").number(), 2U);
}

TEST_F(JobsTest, that_are_cancelled_tell_their_work_and_bring_nothing) {
  const Job first = start("first");
  start("second");
  first.cancel();
  dispatch_.drainAll();
  EXPECT_THAT(sawCancelled_, ElementsAre(true, false));
  EXPECT_THAT(taken_, ElementsAre("second"));
}

TEST_F(JobsTest, that_are_cancelled_while_the_result_is_on_its_way_bring_nothing) {
  const Job job = start("a");
  dispatch_.drain(Queue::utility);
  job.cancel();
  dispatch_.drainAll();
  EXPECT_THAT(taken_, IsEmpty());
}

TEST_F(JobsTest, bring_nothing_once_their_owner_is_gone) {
  start("waits");
  dispatch_.step(Queue::utility);
  start("has not run");
  jobs_.reset();
  dispatch_.drainAll();
  EXPECT_THAT(sawCancelled_, ElementsAre(false, true));
  EXPECT_THAT(taken_, IsEmpty());
}

TEST_F(JobsTest, that_are_started_after_the_end_are_cancelled_from_the_first) {
  jobs_->end();
  EXPECT_TRUE(start("late").isCancelled());
  dispatch_.drainAll();
  EXPECT_THAT(sawCancelled_, ElementsAre(true));
  EXPECT_THAT(taken_, IsEmpty());
}

TEST_F(JobsTest, give_a_cancel_test_that_outlives_them) {
  Job::IsCancelled isCancelled;
  {
    const Job job = start("a");
    isCancelled = job.cancelTest();
  }
  EXPECT_FALSE(isCancelled());
  jobs_.reset();
  EXPECT_TRUE(isCancelled());
}

TEST_F(JobsTest, may_let_the_owner_go_when_they_bring_their_result) {
  jobs_->start(
      Queue::utility, [](const Job&) { return 1; }, [this](int) { jobs_.reset(); });
  start("later");
  dispatch_.drainAll();
  EXPECT_EQ(jobs_, nullptr);
  EXPECT_THAT(taken_, IsEmpty());
}

}  // namespace
}  // namespace tessaly
