// What goes to the Trash, and comes back. The walk that follows shows what the disk has become.

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include <QPointer>

#include "reclaim/CriticalPaths.h"
#include "scan/Format.h"
#include "scan/Remainder.h"
#include "session/FieldChanges.h"
#include "session/ScanSession.h"
#include "system/DiskSpace.h"

namespace tessaly {

void ScanSession::trashFocused() {
  const std::optional<DiskNode> target = focused_ ? focused_ : current();
  if (!target || isRemainder(*target)) return;
  const std::string path = target->path();
  if (CriticalPaths::isCritical(path, services_.homeDirectory)) {
    setCriticalWarning(target);
    return;
  }
  FieldChanges changes(*this);
  if (Result<TrashedItem> item = Trash::moveRecording(path, services_.trash)) {
    changes.set(lastTrashed_, std::vector{std::move(item).value()},
                &ScanSession::lastTrashedChanged);
  } else {
    addFailures(changes, {{.path = path, .cause = item.error()}}, FailureText::Act::moveToTrash);
  }
  // Said of a move that failed as well: the walk shows what is true.
  showToast(changes, "Moved " + std::string(target->name()) + " to Trash");
  const QPointer<ScanSession> session(this);
  changes.announce();
  if (session) rescan();
}

void ScanSession::trash(const DiskNode& node) {
  const DiskNode target = node;  // may be the menu's own, which goes away here
  FieldChanges changes(*this);
  changes.set(menuNode_, std::optional<DiskNode>(), &ScanSession::menuNodeChanged);
  if (isRemainder(target)) {
    changes.announce();
    return;
  }
  if (CriticalPaths::isCritical(target.path(), services_.homeDirectory)) {
    changes.set(criticalWarning_, std::optional(target), &ScanSession::criticalWarningChanged);
    changes.announce();
    return;
  }
  const std::string path = target.path();
  if (const auto item = Trash::moveRecording(path, services_.trash); !item) {
    addFailures(changes, {{.path = path, .cause = item.error()}}, FailureText::Act::moveToTrash);
  }
  const QPointer<ScanSession> session(this);
  changes.announce();
  if (session) rescan();
}

void ScanSession::overruleWarning() {
  if (!criticalWarning_) return;
  if (isRemainder(*criticalWarning_)) {
    dismissWarning();
    return;
  }
  const std::string path = criticalWarning_->path();
  FieldChanges changes(*this);
  changes.set(criticalWarning_, std::optional<DiskNode>(), &ScanSession::criticalWarningChanged);
  if (const auto item = Trash::moveRecording(path, services_.trash); !item) {
    addFailures(changes, {{.path = path, .cause = item.error()}}, FailureText::Act::moveToTrash);
  }
  const QPointer<ScanSession> session(this);
  changes.announce();
  if (session) rescan();
}

void ScanSession::dismissWarning() {
  setCriticalWarning(std::nullopt);
}

void ScanSession::emptyQueue() {
  std::vector<std::string> paths;
  paths.reserve(queue_.size());
  for (const DiskNode& node : queue_) paths.push_back(node.path());
  Trash::Moved moved = Trash::moveManyRecording(paths, services_.trash);

  FieldChanges changes(*this);
  changes.set(lastTrashed_, std::move(moved.items), &ScanSession::lastTrashedChanged);
  changes.set(queue_, std::vector<DiskNode>(), &ScanSession::queueChanged);
  changes.set(queueOpen_, false, &ScanSession::queueOpenChanged);
  addFailures(changes, moved.errors, FailureText::Act::moveToTrash);
  announceAndLookAgain(changes);
}

void ScanSession::undoTrash() {
  if (lastTrashed_.empty()) return;
  // A folder that went after its contents comes back before them.
  std::vector<Trash::Failure> failures;
  std::for_each(lastTrashed_.rbegin(), lastTrashed_.rend(), [&](const TrashedItem& item) {
    const Outcome outcome = Trash::putBack(item, services_.trash);
    if (!outcome) failures.push_back({.path = item.original, .cause = outcome.error()});
  });
  const std::size_t count = lastTrashed_.size() - failures.size();
  FieldChanges changes(*this);
  changes.set(lastTrashed_, std::vector<TrashedItem>(), &ScanSession::lastTrashedChanged);
  showToast(changes, "Put back " + Format::counted(count, "item"));
  addFailures(changes, failures, FailureText::Act::putBack);
  announceAndLookAgain(changes);
}

void ScanSession::emptyTrash(std::function<void()> ended) {
  using DiskSpace::TrashEmptying;
  auto home = [session = QPointer(this), ended = std::move(ended)](TrashEmptying emptying) {
    if (!session) return;
    if (ended) ended();
    if (session && emptying == TrashEmptying::goesOn) {
      session->flash("Emptying the Trash goes on in the background");
    }
    if (session) session->refreshDisk();
  };
  auto work = [&dispatch = services_.dispatch, run = services_.run, home = std::move(home)] {
    const TrashEmptying emptying = DiskSpace::emptyTrash(run);
    dispatch.async(Dispatch::Queue::main, [home, emptying] { home(emptying); });
  };
  services_.dispatch.async(Dispatch::Queue::userInitiated, std::move(work));
}

void ScanSession::announceAndLookAgain(FieldChanges& changes) {
  const QPointer<ScanSession> session(this);
  changes.announce();
  if (session) rescan();
  if (session) refreshDisk();
}

}  // namespace tessaly
