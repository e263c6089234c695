#include "session/Removal.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <QPointer>

#include "platform/FileAccess.h"
#include "platform/FileIdentity.h"
#include "platform/NumberedName.h"
#include "platform/ResolvedPath.h"
#include "platform/WriteNote.h"
#include "reclaim/CriticalPaths.h"
#include "session/ProgressRelay.h"

namespace tessaly {

void Removal::setCriticalWarning(std::optional<DiskNode> node) {
  setField(this, criticalWarning_, std::move(node), &Removal::criticalWarningChanged);
}

void Removal::dismissWarning() {
  setCriticalWarning(std::nullopt);
}

void Removal::dismissWarning(FieldChanges& changes) {
  changes.set(this, criticalWarning_, std::optional<DiskNode>(), &Removal::criticalWarningChanged);
}

bool Removal::warnIfCritical(FieldChanges& changes, const DiskNode& node) {
  if (!CriticalPaths::isCritical(node.path(), services_.homeDirectory)) return false;
  changes.set(this, criticalWarning_, std::optional(node), &Removal::criticalWarningChanged);
  return true;
}

Removal::Failures Removal::move(const std::string& path) {
  const auto item = Trash::moveRecording(path, services_.trash);
  if (item) return {};
  return {{.path = path, .cause = item.error()}};
}

Removal::Failures Removal::moveRecording(FieldChanges& changes, const std::string& path) {
  Result<TrashedItem> item = Trash::moveRecording(path, services_.trash);
  if (!item) return {{.path = path, .cause = item.error()}};
  changes.set(this, lastTrashed_, std::vector{std::move(item).value()},
              &Removal::lastTrashedChanged);
  return {};
}

Removal::Failures Removal::moveAllRecording(FieldChanges& changes,
                                            const std::vector<std::string>& paths) {
  Trash::Moved moved = Trash::moveManyRecording(paths, services_.trash);
  changes.set(this, lastTrashed_, std::move(moved.items), &Removal::lastTrashedChanged);
  return std::move(moved.errors);
}

Removal::Failures Removal::putBack(FieldChanges& changes) {
  // In reverse order, so that a folder is put back before its contents if it was moved after them.
  Failures failures;
  std::for_each(lastTrashed_.rbegin(), lastTrashed_.rend(), [&](const TrashedItem& item) {
    const Outcome outcome = Trash::putBack(item, services_.trash);
    if (!outcome) failures.push_back({.path = item.original, .cause = outcome.error()});
  });
  changes.set(this, lastTrashed_, std::vector<TrashedItem>(), &Removal::lastTrashedChanged);
  return failures;
}

bool Removal::isMoving() const {
  return progress_.has_value();
}

void Removal::moveBatch(std::vector<TrashBatch::Item> items, TakeBatch take) {
  stop_ = std::make_shared<CancelFlag>();
  const std::size_t all = items.size();
  // The worker does not access this object: the receiver runs on the main queue, and a job that is
  // not cancelled has an owner.
  const auto relay = [this, all, &dispatch = services_.dispatch](const Job& job) {
    ProgressRelay::Receiver receiver;
    receiver.percent = [this, all, job](double fraction) {
      if (!job.isCancelled())
        setDone(static_cast<std::size_t>(std::llround(fraction * static_cast<double>(all))));
    };
    return ProgressRelay(dispatch, std::move(receiver));
  };
  auto work = [relay, items = std::move(items), all, stop = stop_,
               &trash = services_.trash](const Job& job) mutable {
    ProgressRelay progress = relay(job);
    return TrashBatch::move(
        std::move(items), trash, [&] { return stop->isSet() || job.isCancelled(); },
        [&](std::size_t done) {
          progress.percent(static_cast<double>(done) / static_cast<double>(all));
        });
  };
  waitingBatch_ = [this, work = std::move(work), take = std::move(take)] {
    jobs_.start(Dispatch::Queue::userInitiated, work,
                [this, take](const TrashBatch::Moved& moved) { takeBatch(moved, take); });
  };
  if (!isEmptying()) startWaitingBatch();
  FieldChanges changes;
  changes.set(this, progress_, std::optional(Progress{.done = 0, .all = all}),
              &Removal::progressChanged);
  changes.note(this, &Removal::movingChanged);
  changes.announce();
}

void Removal::startWaitingBatch() {
  if (const auto start = std::exchange(waitingBatch_, {})) start();
}

void Removal::stopBatch() {
  if (!progress_) return;
  stop_->set();
  startWaitingBatch();
  std::optional<Progress> stopping = progress_;
  stopping->isStopping = true;
  setField(this, progress_, stopping, &Removal::progressChanged);
}

void Removal::setDone(std::size_t done) {
  if (!progress_) return;
  std::optional<Progress> further = progress_;
  further->done = done;
  setField(this, progress_, further, &Removal::progressChanged);
}

void Removal::takeBatch(const TrashBatch::Moved& moved, const TakeBatch& take) {
  FieldChanges changes;
  // A batch that was stopped before its first item leaves the last move to be put back.
  if (!moved.items.empty() || !moved.errors.empty())
    changes.set(this, lastTrashed_, moved.items, &Removal::lastTrashedChanged);
  changes.set(this, progress_, std::optional<Progress>(), &Removal::progressChanged);
  changes.note(this, &Removal::movingChanged);
  take(changes, moved);
}

std::size_t Removal::archive(const std::vector<DiskNode>& nodes, TakeArchive take) {
  std::vector<std::string> paths;
  for (const DiskNode& node : nodes) {
    std::string path = node.path();
    if (FileAccess::ofMachine().kindOf(path) == FileAccess::Kind::nothing) continue;
    paths.push_back(std::move(path));
  }
  if (paths.empty()) return 0;
  const std::size_t count = paths.size();

  const QPointer<Removal> self(this);
  const std::vector<std::string> inWork = zips_->paths();
  std::optional<std::string> chosen = services_.savePanel.chooseFile({.fileName = nameForZip(),
                                                                      .extension = "zip",
                                                                      .canCreateDirectories = true,
                                                                      .isForNewFile = true});
  // The panel ran the event loop, so the object may be gone.
  if (!self || !chosen) return 0;
  ZipEngine::Request request{.paths = std::move(paths),
                             .to = *std::move(chosen),
                             .isGivenUp = [zips = zips_] { return zips->isGivenUp(); }};
  const std::string place = resolvedAbove(request.to);
  // The user has agreed to replace the file that is there now. An archive that was finished while
  // the panel was open is excepted: its items are in the Trash by now.
  if (std::ranges::find(inWork, place) == inWork.end()) {
    if (const auto old = FileIdentity::of(request.to)) request.replaced = old.value();
  }

  zips_->begin(place);
  std::string notes =
      services_.supportDirectory ? *services_.supportDirectory : ScanStore::supportDir();
  jobs_.start(
      Dispatch::Queue::userInitiated,
      [zips = zips_, place, request = std::move(request), archive = services_.archive,
       notes = std::move(notes)](const Job&) {
        ZipEngine::Archived archived = [&] {
          const WriteNote noted = WriteNote::of(request.to, notes);
          return archive(request);
        }();
        zips->end(place);
        return archived;
      },
      std::move(take));
  return count;
}

// Two archives of the same minute must not get the same suggested name.
std::string Removal::nameForZip() const {
  const std::string name = ZipEngine::suggestedName(services_.date());
  int number = 1;
  while (zips_->hasName(numberedName(name, number))) ++number;
  return numberedName(name, number);
}

void Removal::giveUpZips() {
  zips_->giveUp();
}

void Removal::emptyTrash(std::function<void(DiskSpace::TrashEmptying emptying)> take) {
  ++emptyings_;
  jobs_.start(
      Dispatch::Queue::userInitiated,
      [run = services_.run](const Job&) { return DiskSpace::emptyTrash(run); },
      [this, take = std::move(take)](DiskSpace::TrashEmptying emptying) {
        --emptyings_;
        if (!isEmptying()) startWaitingBatch();
        take(emptying);
      });
}

void Removal::end() {
  giveUpZips();
  jobs_.end();
}

}  // namespace tessaly
