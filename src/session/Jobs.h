// Background work of one owner: runs a function on a worker queue and hands its result to a
// function on the main queue, unless the job was cancelled or its owner is gone by then.
//
// A Jobs is a member of the object that its results go to, so that they may capture that object.
// Jobs is used on the main thread only; a Job is safe on any thread.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "platform/Dispatch.h"
#include "session/CancelFlag.h"

namespace tessaly {

// One job, as its owner and its work see it. A default-made Job has never run, and is cancelled.
class Job {
 public:
  using IsCancelled = std::function<bool()>;

  Job() = default;
  Job(std::uint64_t number, std::shared_ptr<CancelFlag> flag)
      : number_(number), flag_(std::move(flag)) {}

  // Counted for each owner from 1; 0 for a default-made Job.
  std::uint64_t number() const { return number_; }
  // The work may go on until it next asks. Its result is dropped.
  void cancel() const {
    if (flag_) flag_->set();
  }
  bool isCancelled() const { return !flag_ || flag_->isSet(); }
  // For an engine that asks while it works. May outlive the Job.
  IsCancelled cancelTest() const {
    return [job = *this] { return job.isCancelled(); };
  }

 private:
  std::uint64_t number_ = 0;
  std::shared_ptr<CancelFlag> flag_;
};

class Jobs {
 public:
  // `dispatch` outlives the Jobs and everything that it has started.
  explicit Jobs(Dispatch& dispatch) : dispatch_(dispatch) {}
  ~Jobs() { end(); }
  Jobs(const Jobs&) = delete;
  Jobs& operator=(const Jobs&) = delete;

  // Runs `work(job)` on `queue`, then `take(result)` on the main queue. What `work` captures is
  // used on the worker's thread, what `take` captures on the main thread.
  template <class Work, class Take>
  Job start(Dispatch::Queue queue, Work work, Take take) {
    Job job = begin();
    dispatch_.async(queue, [&dispatch = dispatch_, job, work = std::move(work),
                            take = std::move(take)]() mutable {
      dispatch.async(Dispatch::Queue::main,
                     [job, take = std::move(take), result = work(job)]() mutable {
                       if (!job.isCancelled()) take(std::move(result));
                     });
    });
    return job;
  }

  // Cancels all jobs, and those that are started later.
  void end() {
    hasEnded_ = true;
    for (const std::weak_ptr<CancelFlag>& flag : flags_) {
      if (const auto running = flag.lock()) running->set();
    }
  }

 private:
  Job begin() {
    std::erase_if(flags_, [](const std::weak_ptr<CancelFlag>& flag) { return flag.expired(); });
    auto flag = std::make_shared<CancelFlag>();
    if (hasEnded_) flag->set();
    flags_.push_back(flag);
    return {++last_, std::move(flag)};
  }

  Dispatch& dispatch_;
  std::uint64_t last_ = 0;
  bool hasEnded_ = false;
  std::vector<std::weak_ptr<CancelFlag>> flags_;  // of the jobs that somebody still knows
};

}  // namespace tessaly
