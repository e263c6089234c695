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

// An owner that records the results it takes.
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

TEST_F(JobsTest, a_job_runs_on_its_queue_and_its_result_on_the_main_queue) {
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

TEST_F(JobsTest, jobs_are_numbered_in_the_order_of_their_start) {
  EXPECT_EQ(Job().number(), 0U);
  EXPECT_EQ(start("a").number(), 1U);
  EXPECT_EQ(start("b").number(), 2U);
}

TEST_F(JobsTest, a_job_that_was_never_started_is_cancelled) {
  const Job never;
  EXPECT_TRUE(never.isCancelled());
  EXPECT_TRUE(never.cancelTest()());
  never.cancel();
}

TEST_F(JobsTest, a_cancelled_job_sees_it_and_its_result_is_dropped) {
  const Job first = start("first");
  start("second");
  first.cancel();
  dispatch_.drainAll();
  EXPECT_THAT(sawCancelled_, ElementsAre(true, false));
  EXPECT_THAT(taken_, ElementsAre("second"));
}

TEST_F(JobsTest, a_job_cancelled_before_its_result_is_taken_delivers_nothing) {
  const Job job = start("a");
  dispatch_.drain(Queue::utility);
  job.cancel();
  dispatch_.drainAll();
  EXPECT_THAT(taken_, IsEmpty());
}

TEST_F(JobsTest, jobs_of_a_destroyed_owner_are_cancelled_and_deliver_nothing) {
  start("waits");
  dispatch_.step(Queue::utility);
  start("has not run");
  jobs_.reset();
  dispatch_.drainAll();
  EXPECT_THAT(sawCancelled_, ElementsAre(false, true));
  EXPECT_THAT(taken_, IsEmpty());
}

TEST_F(JobsTest, a_job_started_after_the_end_is_cancelled_at_once) {
  jobs_->end();
  EXPECT_TRUE(start("late").isCancelled());
  dispatch_.drainAll();
  EXPECT_THAT(sawCancelled_, ElementsAre(true));
  EXPECT_THAT(taken_, IsEmpty());
}

TEST_F(JobsTest, a_cancel_test_outlives_its_job) {
  Job::IsCancelled isCancelled;
  {
    const Job job = start("a");
    isCancelled = job.cancelTest();
  }
  EXPECT_FALSE(isCancelled());
  jobs_.reset();
  EXPECT_TRUE(isCancelled());
}

TEST_F(JobsTest, a_result_may_destroy_the_owner) {
  jobs_->start(
      Queue::utility, [](const Job&) { return 1; }, [this](int) { jobs_.reset(); });
  start("later");
  dispatch_.drainAll();
  EXPECT_EQ(jobs_, nullptr);
  EXPECT_THAT(taken_, IsEmpty());
}

}  // namespace
}  // namespace tessaly
