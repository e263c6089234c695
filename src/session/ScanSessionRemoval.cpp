// Moves to the Trash and back. The rescan afterwards shows the new state of the disk.

#include <algorithm>
#include <cstddef>
#include <optional>
#include <unordered_set>
#include <utility>

#include <QPointer>

#include "platform/FileIdentity.h"
#include "scan/Format.h"
#include "scan/PathName.h"
#include "scan/Remainder.h"
#include "scan/ShownName.h"
#include "session/ScanSession.h"

namespace tessaly {

namespace {

using FailureText::Act;

// For items that changed after archiving.
std::string wordsForOthers(const std::vector<std::string>& paths) {
  std::string words =
      Format::counted(paths.size(), "item") +
      " changed after archiving and did not move: " + std::string(lastPathComponent(paths.front()));
  if (paths.size() > 1) words += " and " + std::to_string(paths.size() - 1) + " more";
  return words;
}

}  // namespace

bool ScanSession::mayMove(FieldChanges& changes) {
  if (removal_->isEmptying()) messages_->flash(changes, "Wait until the Trash has been emptied");
  return !removal_->isEmptying() && !removal_->isMoving();
}

void ScanSession::trashFocused() {
  const std::optional<DiskNode> target =
      selection_->focused() ? selection_->focused() : navigation_->current();
  if (target) trashRecording(*target);
}

void ScanSession::trashRecording(const DiskNode& node) {
  if (isRemainder(node)) return;
  FieldChanges changes;
  if (!mayMove(changes) || removal_->warnIfCritical(changes, node)) {
    changes.announce();
    return;
  }
  const std::string path = node.path();
  copies_.note(path);
  messages_->tellFailures(changes, removal_->moveRecording(changes, path), Act::moveToTrash);
  copies_.renew({path});
  // Shown for a failed move too; the rescan shows the true state.
  messages_->flash(changes, "Moved " + shownName(node) + " to Trash");
  announceAndRescan(changes);
}

void ScanSession::trash(const DiskNode& node) {
  const DiskNode target = node;  // a copy: `node` may be the menu's own, which is reset here
  FieldChanges changes;
  shown_->setMenuNode(changes, std::nullopt);
  if (isRemainder(target) || !mayMove(changes) || removal_->warnIfCritical(changes, target)) {
    changes.announce();
    return;
  }
  moveWithoutRecord(changes, target);
}

void ScanSession::overruleWarning() {
  const std::optional<DiskNode> target = removal_->criticalWarning();
  if (!target) return;
  FieldChanges changes;
  if (!mayMove(changes)) {
    changes.announce();
    return;
  }
  removal_->dismissWarning(changes);
  if (isRemainder(*target)) {
    changes.announce();
    return;
  }
  moveWithoutRecord(changes, *target);
}

void ScanSession::moveWithoutRecord(FieldChanges& changes, const DiskNode& node) {
  messages_->tellFailures(changes, removal_->move(node.path()), Act::moveToTrash);
  announceAndRescan(changes);
}

void ScanSession::emptyQueue() {
  FieldChanges changes;
  if (!mayMove(changes)) {
    changes.announce();
    return;
  }
  std::vector<std::string> paths;
  paths.reserve(cleanupQueue_->queue().size());
  Removal::Failures failures;
  for (const DiskNode& node : cleanupQueue_->queue()) {
    std::string path = node.path();
    if (const Outcome check = copies_.check(path)) {
      paths.push_back(std::move(path));
    } else {
      failures.push_back({.path = std::move(path), .cause = check.error()});
    }
  }
  const Removal::Failures ofMoves = removal_->moveAllRecording(changes, paths);
  failures.insert(failures.end(), ofMoves.begin(), ofMoves.end());
  copies_.renew(paths);
  cleanupQueue_->clearQueue(changes);
  messages_->tellFailures(changes, failures, Act::moveToTrash);
  announceAndLookAgain(changes);
}

void ScanSession::undoTrash() {
  const std::size_t all = removal_->lastTrashed().size();
  if (all == 0 || removal_->isMoving()) return;
  std::vector<std::string> paths;
  for (const TrashedItem& item : removal_->lastTrashed()) paths.push_back(item.original);
  FieldChanges changes;
  const Removal::Failures failures = removal_->putBack(changes);
  copies_.renew(paths);
  messages_->flash(changes, "Put back " + Format::counted(all - failures.size(), "item"));
  messages_->tellFailures(changes, failures, Act::putBack);
  announceAndLookAgain(changes);
}

void ScanSession::moveBatch(std::vector<TrashBatch::Item> items, BatchEnded ended) {
  if (removal_->isMoving()) return;
  removal_->moveBatch(std::move(items), [this, ended = std::move(ended)](
                                            FieldChanges& changes, const TrashBatch::Moved& moved) {
    endBatch(changes, moved, ended);
  });
}

void ScanSession::endBatch(FieldChanges& changes, const TrashBatch::Moved& moved,
                           const BatchEnded& ended) {
  const QPointer<ScanSession> session(this);
  messages_->tellFailures(changes, moved.errors, Act::moveToTrash);
  changes.announce();
  if (session) machine_->refreshDisk();
  if (session && ended) ended(moved);
  if (session) takeWaitingArchives();
}

void ScanSession::takeWaitingArchives() {
  const QPointer<ScanSession> session(this);
  // A receiver may have started another batch.
  while (session && !waitingArchives_.empty() && !removal_->isMoving() && !removal_->isEmptying()) {
    const ZipEngine::Archived archived = std::move(waitingArchives_.front());
    waitingArchives_.erase(waitingArchives_.begin());
    takeArchive(archived);
  }
}

void ScanSession::emptyTrash(std::function<void()> ended) {
  using DiskSpace::TrashEmptying;
  if (removal_->isMoving()) return;
  removal_->emptyTrash([this, ended = std::move(ended)](TrashEmptying emptying) {
    const QPointer<ScanSession> session(this);
    if (ended) ended();
    if (session && emptying == TrashEmptying::goesOn) {
      messages_->flash("Emptying the Trash goes on in the background");
    }
    if (session) machine_->refreshDisk();
    if (session) takeWaitingArchives();
  });
}

void ScanSession::zipThenTrash(std::vector<DiskNode> nodes) {
  if (removal_->isMoving()) return;
  std::erase_if(nodes, isRemainder);
  FieldChanges changes;
  const bool isRefused = std::any_of(nodes.begin(), nodes.end(), [&](const DiskNode& node) {
    return removal_->warnIfCritical(changes, node);
  });
  if (isRefused) {
    changes.announce();
    return;
  }
  const QPointer<ScanSession> session(this);
  const std::size_t count = removal_->archive(
      nodes, [this](const ZipEngine::Archived& archived) { takeArchive(archived); });
  if (session && count != 0) messages_->flash("Zipping " + Format::counted(count, "item") + "…");
}

void ScanSession::takeArchive(const ZipEngine::Archived& archived) {
  using End = ZipEngine::Archived::End;
  if (removal_->isMoving() || removal_->isEmptying()) {
    waitingArchives_.push_back(archived);
    return;
  }
  const QPointer<ScanSession> session(this);
  switch (archived.end) {
    case End::made:
      trashArchived(archived);
      break;
    case End::notMade:
      messages_->flash("Could not create zip");
      if (session && !archived.cause.empty())
        messages_->tellFailure("Could not create zip: " + archived.cause);
      break;
    case End::incomplete:
      messages_->flash("Archive would be incomplete; nothing was moved");
      if (session)
        messages_->tellFailure("Nothing was moved. Not to be archived: " + archived.cause);
      break;
    case End::givenUp:
      break;
  }
}

void ScanSession::trashArchived(const ZipEngine::Archived& archived) {
  const Result<FileIdentity> archive = FileIdentity::of(archived.path);
  const std::string name(lastPathComponent(archived.path));
  if (!archive || archive.value() != archived.identity) {
    const QPointer<ScanSession> session(this);
    messages_->flash("Archive is gone or changed; nothing was moved");
    if (session)
      messages_->tellFailure("Nothing was moved. The archive is gone or changed: " + name);
    return;
  }
  std::vector<std::string> unchanged;
  std::vector<std::string> others;
  std::unordered_set<std::string> all;
  for (const ZipEngine::Original& original : archived.originals) {
    const Result<FileIdentity> now = FileIdentity::of(original.path);
    const bool isSame = now && now.value() == original.identity;
    (isSame ? unchanged : others).push_back(original.path);
    all.insert(original.path);
  }

  FieldChanges changes;
  const Removal::Failures failures = removal_->moveAllRecording(changes, unchanged);
  // Items that could not be moved leave the queue as well.
  cleanupQueue_->removeFromQueue(changes, all);
  selection_->clearSelection(changes);
  messages_->tellFailures(changes, failures, Act::moveToTrash);
  if (!others.empty()) messages_->tellFailure(changes, wordsForOthers(others));
  messages_->flash(changes, "Archived to " + name);
  announceAndLookAgain(changes);
}

void ScanSession::announceAndRescan(FieldChanges& changes) {
  const QPointer<ScanSession> session(this);
  changes.announce();
  if (session) rescan();
}

void ScanSession::announceAndLookAgain(FieldChanges& changes) {
  const QPointer<ScanSession> session(this);
  announceAndRescan(changes);
  if (session) machine_->refreshDisk();
}

}  // namespace tessaly
