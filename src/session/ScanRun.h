// The running scan: its progress, and how it ended. A new scan cancels the running one.
//
// Main thread only.
#pragma once

#include <chrono>
#include <functional>
#include <string>

#include <QObject>

#include "platform/Dispatch.h"
#include "scan/DiskNode.h"
#include "scan/DiskScanner.h"
#include "scan/UnreadableItems.h"
#include "session/FieldChanges.h"
#include "session/Jobs.h"
#include "session/SessionServices.h"

namespace tessaly {

enum class ScanStatus { idle, scanning, complete, error };

class ScanRun : public QObject {
  Q_OBJECT
  Q_PROPERTY(double scanPercent READ scanPercent NOTIFY scanPercentChanged)

 public:
  // The result of a walk.
  struct Walked {
    DiskNode tree;
    std::string root;  // as passed to the scan
    UnreadableItems unreadable;
  };
  using Take = std::function<void(const Walked& walked)>;

  // `services` and what they name outlive the run.
  explicit ScanRun(const SessionServices& services);

  ScanStatus status() const { return status_; }
  const std::string& progress() const { return progress_; }
  double scanPercent() const { return scanPercent_; }  // 0 to 1
  const std::string& errorMessage() const { return errorMessage_; }
  // The root of the latest scan, also if it failed or was cancelled.
  const std::string& scanRoot() const { return scanRoot_; }

  // Cancels the running scan and starts another. Passes its tree to `take`, unless the scan is
  // replaced or cancelled, or has found nothing; `take` must lead to complete().
  void start(FieldChanges& changes, const std::string& root, DiskScanner::Options options,
             Take take);
  // To be called when the tree of the scan is on screen.
  void complete(FieldChanges& changes);
  // To be called when the stored tree, a scan of `root`, is on screen.
  void restore(FieldChanges& changes, const std::string& root);
  Q_INVOKABLE void cancel();
  // The time since the latest scan began.
  std::chrono::duration<double> duration() const;

  // Cancels the walk without waiting for it.
  void end() { jobs_.end(); }

 signals:
  void statusChanged();
  void progressChanged();
  void scanPercentChanged();
  void errorMessageChanged();
  void scanRootChanged();

 private:
  void startWalk(DiskScanner::Options options, Take take);
  void takeWalk(const Walked& walked, const Take& take);

  const SessionServices& services_;
  Jobs jobs_;
  Job walk_;  // of the latest scan; the result of a replaced one is dropped
  std::chrono::steady_clock::time_point started_;
  bool hasTree_ = false;  // a scan has found something, in this run or the last
  ScanStatus status_ = ScanStatus::idle;
  std::string progress_;
  double scanPercent_ = 0;
  std::string errorMessage_;
  std::string scanRoot_;
};

}  // namespace tessaly
