#include "session/ScanRun.h"

#include <utility>

#include "look/Wording.h"
#include "session/ProgressRelay.h"

namespace tessaly {

ScanRun::ScanRun(const SessionServices& services)
    : services_(services), jobs_(services.dispatch), started_(services.now()) {}

void ScanRun::start(FieldChanges& changes, const std::string& root, DiskScanner::Options options,
                    Take take) {
  walk_.cancel();
  started_ = services_.now();
  changes.set(this, status_, ScanStatus::scanning, &ScanRun::statusChanged);
  changes.set(this, progress_, "Scanning started…", &ScanRun::progressChanged);
  changes.set(this, scanPercent_, 0.0, &ScanRun::scanPercentChanged);
  changes.set(this, errorMessage_, "", &ScanRun::errorMessageChanged);
  changes.set(this, scanRoot_, root, &ScanRun::scanRootChanged);
  startWalk(std::move(options), std::move(take));
}

void ScanRun::startWalk(DiskScanner::Options options, Take take) {
  // The worker does not access this object: the receiver runs on the main queue, and a job that is
  // not cancelled has an owner.
  const auto relay = [this, &dispatch = services_.dispatch](const Job& job) {
    ProgressRelay::Receiver receiver;
    receiver.line = [this, job](const std::string& line) {
      if (!job.isCancelled()) setField(this, progress_, line, &ScanRun::progressChanged);
    };
    receiver.percent = [this, job](double fraction) {
      if (!job.isCancelled()) setField(this, scanPercent_, fraction, &ScanRun::scanPercentChanged);
    };
    return ProgressRelay(dispatch, std::move(receiver));
  };
  walk_ = jobs_.start(
      Dispatch::Queue::userInitiated,
      [relay, root = scanRoot_, walk = services_.walk,
       options = std::move(options)](const Job& job) {
        ProgressRelay progress = relay(job);
        Walked walked;
        walked.root = root;
        DiskScanner::Callbacks callbacks;
        callbacks.progress = [&progress](const std::string& line) { progress.line(line); };
        callbacks.percent = [&progress](double fraction) { progress.percent(fraction); };
        callbacks.isCancelled = job.cancelTest();
        callbacks.unreadable = [&walked](const SystemError& failure) {
          walked.unreadable.add(failure);
        };
        walked.tree = walk(root, callbacks, options);
        return walked;
      },
      [this, take = std::move(take)](const Walked& walked) { takeWalk(walked, take); });
}

void ScanRun::takeWalk(const Walked& walked, const Take& take) {
  if (walked.tree.size() != 0 || !walked.tree.children().empty()) {
    take(walked);
    return;
  }
  FieldChanges changes;
  // If there is an older tree, it stays, and no error is shown.
  if (hasTree_) {
    changes.set(this, status_, ScanStatus::complete, &ScanRun::statusChanged);
  } else {
    changes.set(this, status_, ScanStatus::error, &ScanRun::statusChanged);
    changes.set(this, errorMessage_,
                "Nothing readable at " + walked.root + ". " + Wording::current().nothingReadable,
                &ScanRun::errorMessageChanged);
  }
  changes.announce();
}

void ScanRun::complete(FieldChanges& changes) {
  hasTree_ = true;
  changes.set(this, status_, ScanStatus::complete, &ScanRun::statusChanged);
  changes.set(this, progress_, "", &ScanRun::progressChanged);
  changes.set(this, scanPercent_, 1.0, &ScanRun::scanPercentChanged);
}

void ScanRun::restore(FieldChanges& changes, const std::string& root) {
  hasTree_ = true;
  changes.set(this, scanRoot_, root, &ScanRun::scanRootChanged);
  changes.set(this, status_, ScanStatus::complete, &ScanRun::statusChanged);
}

void ScanRun::cancel() {
  walk_.cancel();
  FieldChanges changes;
  changes.set(this, progress_, "", &ScanRun::progressChanged);
  changes.set(this, scanPercent_, 0.0, &ScanRun::scanPercentChanged);
  changes.set(this, errorMessage_, "", &ScanRun::errorMessageChanged);
  changes.set(this, status_, hasTree_ ? ScanStatus::complete : ScanStatus::idle,
              &ScanRun::statusChanged);
  changes.announce();
}

std::chrono::duration<double> ScanRun::duration() const {
  return services_.now() - started_;
}

}  // namespace tessaly
