// Background work of one owner: runs a function on a worker queue and passes its result to a
// function on the main queue, unless the job is cancelled or its owner is destroyed by then.
//
// Make Jobs a member of the object that takes the results; the functions may then capture that
// object. Jobs is used on the main thread only; a Job is safe on any thread.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "platform/Dispatch.h"
#include "session/CancelFlag.h"

namespace tessaly {

// A handle to one job, for its owner and its work. A default-constructed Job has never run and
// counts as cancelled.
class Job {
 public:
  using IsCancelled = std::function<bool()>;

  Job() = default;
  Job(std::uint64_t number, std::shared_ptr<CancelFlag> flag)
      : number_(number), flag_(std::move(flag)) {}

  // Counts the owner's jobs from 1; 0 for a default-constructed Job.
  std::uint64_t number() const { return number_; }
  // The work may continue until it tests for cancellation next. Its result is dropped.
  void cancel() const {
    if (flag_) flag_->set();
  }
  bool isCancelled() const { return !flag_ || flag_->isSet(); }
  // For an engine that polls it. May outlive the Job.
  IsCancelled cancelTest() const {
    return [job = *this] { return job.isCancelled(); };
  }

 private:
  std::uint64_t number_ = 0;
  std::shared_ptr<CancelFlag> flag_;
};

class Jobs {
 public:
  // `dispatch` must outlive the Jobs and all work it has started.
  explicit Jobs(Dispatch& dispatch) : dispatch_(dispatch) {}
  ~Jobs() { end(); }
  Jobs(const Jobs&) = delete;
  Jobs& operator=(const Jobs&) = delete;

  // Runs `work(job)` on `queue`, then `take(result)` on the main queue. The captures of `work` are
  // used on the worker thread, those of `take` on the main thread.
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

  // Cancels all jobs, including those that are started later.
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
  std::vector<std::weak_ptr<CancelFlag>> flags_;  // of jobs whose handles still exist
};

}  // namespace tessaly
