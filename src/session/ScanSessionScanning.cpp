// How a scan runs, from the call to the tree on screen, with scans that overtake each other.

#include <memory>
#include <utility>

#include <QPointer>

#include "session/FieldChanges.h"
#include "session/ProgressRelay.h"
#include "session/ScanSession.h"

namespace tessaly {

void ScanSession::scan(const std::string& root) {
  if (cancelFlag_) cancelFlag_->set();
  ++generation_;
  cancelFlag_ = std::make_shared<CancelFlag>();
  scanStarted_ = services_.now();

  FieldChanges changes(*this);
  changes.set(pane_, MainPane::map, &ScanSession::paneChanged);
  changes.set(status_, ScanStatus::scanning, &ScanSession::statusChanged);
  changes.set(progress_, "Scanning started…", &ScanSession::progressChanged);
  changes.set(scanPercent_, 0.0, &ScanSession::scanPercentChanged);
  changes.set(errorMessage_, "", &ScanSession::errorMessageChanged);
  changes.set(scanRoot_, root, &ScanSession::scanRootChanged);
  startWalk(root);
  changes.announce();
}

void ScanSession::startWalk(const std::string& root) {
  Dispatch& dispatch = services_.dispatch;
  const QPointer<ScanSession> session(this);
  const std::uint64_t generation = generation_;
  const std::shared_ptr<CancelFlag> flag = cancelFlag_;

  ProgressRelay::Receiver receiver;
  receiver.line = [session, generation](const std::string& line) {
    if (!session || session->generation_ != generation) return;
    session->setField(session->progress_, line, &ScanSession::progressChanged);
  };
  receiver.percent = [session, generation](double fraction) {
    if (!session || session->generation_ != generation) return;
    session->setField(session->scanPercent_, fraction, &ScanSession::scanPercentChanged);
  };

  BloatFilter::ScanExcludes skipped = BloatFilter::scanExcludes(filters_);
  DiskScanner::Options options;
  options.extraNames = std::move(skipped.names);
  options.extraSuffixes = std::move(skipped.suffixes);
  options.extraPrefixes = excludes_;

  // Runs on a worker. Of the session it touches nothing but on the main queue, where it is known
  // whether the session still exists.
  auto work = [&dispatch, session, generation, flag, root, walk = services_.walk,
               relay = ProgressRelay(dispatch, std::move(receiver)),
               options = std::move(options)]() mutable {
    DiskScanner::Callbacks callbacks;
    callbacks.progress = [&relay](const std::string& line) { relay.line(line); };
    callbacks.percent = [&relay](double fraction) { relay.percent(fraction); };
    callbacks.isCancelled = [&flag = *flag] { return flag.isSet(); };
    UnreadableItems unreadable;
    callbacks.unreadable = [&unreadable](const SystemError& failure) { unreadable.add(failure); };
    const DiskNode result = walk(root, callbacks, options);
    dispatch.async(Dispatch::Queue::main,
                   [session, generation, flag, root, result, unreadable = std::move(unreadable)] {
                     if (!session) return;
                     session->finishWalk(generation, *flag, result, root, unreadable);
                   });
  };
  dispatch.async(Dispatch::Queue::userInitiated, std::move(work));
}

void ScanSession::finishWalk(std::uint64_t generation, const CancelFlag& flag,
                             const DiskNode& result, const std::string& root,
                             const UnreadableItems& unreadable) {
  if (generation != generation_ || flag.isSet()) return;
  if (result.size() != 0 || !result.children().empty()) {
    applyScanResult(result, root, unreadable);
    return;
  }
  // An older tree is worth more than a complaint.
  FieldChanges changes(*this);
  if (stack_.empty()) {
    changes.set(status_, ScanStatus::error, &ScanSession::statusChanged);
    changes.set(errorMessage_,
                "Nothing readable at " + root + ". Grant Full Disk Access or pick another folder.",
                &ScanSession::errorMessageChanged);
  } else {
    changes.set(status_, ScanStatus::complete, &ScanSession::statusChanged);
  }
  changes.announce();
}

void ScanSession::cancel() {
  if (cancelFlag_) cancelFlag_->set();
  ++generation_;

  FieldChanges changes(*this);
  changes.set(progress_, "", &ScanSession::progressChanged);
  changes.set(scanPercent_, 0.0, &ScanSession::scanPercentChanged);
  changes.set(errorMessage_, "", &ScanSession::errorMessageChanged);
  changes.set(status_, stack_.empty() ? ScanStatus::idle : ScanStatus::complete,
              &ScanSession::statusChanged);
  changes.announce();
}

void ScanSession::scanHome() {
  scan(services_.homeDirectory);
}

void ScanSession::rescan() {
  if (!scanRoot_.empty()) scan(scanRoot_);
}

void ScanSession::chooseFolder() {
  const QPointer<ScanSession> session(this);
  const std::optional<std::string> folder =
      services_.folderPanel.chooseFolder({.prompt = "Scan", .message = "Choose a folder to map."});
  // The panel runs the event loop meanwhile.
  if (session && folder) scan(*folder);
}

}  // namespace tessaly
