// Moves items to the Trash and back, after archiving them if wanted. The user is warned before a
// critical item moves, unless it is in the cleanup queue. One batch at a time moves on a worker
// queue; meanwhile callers start no other move, to the Trash or back, and do not empty it.
//
// Emptying must take only what was in the Trash when it was requested, but the system decides that
// a moment later, or several on a slow disk. So while it empties the Trash nothing moves there:
// callers start no other move, and a batch waits.
//
// Main thread only.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <QObject>

#include "reclaim/Trash.h"
#include "reclaim/ZipEngine.h"
#include "scan/DiskNode.h"
#include "session/FieldChanges.h"
#include "session/Jobs.h"
#include "session/SessionServices.h"
#include "session/TrashBatch.h"
#include "session/ZipsInWork.h"
#include "system/DiskSpace.h"

namespace tessaly {

class Removal : public QObject {
  Q_OBJECT
  Q_PROPERTY(bool moving READ isMoving NOTIFY movingChanged)

 public:
  using Failures = std::vector<Trash::Failure>;

  // `services` and everything it refers to must outlive the removal.
  explicit Removal(const SessionServices& services)
      : services_(services), jobs_(services.dispatch) {}

  // The items of the last move to the Trash, in its order.
  const std::vector<TrashedItem>& lastTrashed() const { return lastTrashed_; }
  // The critical item that the user is warned about.
  const std::optional<DiskNode>& criticalWarning() const { return criticalWarning_; }
  void setCriticalWarning(std::optional<DiskNode> node);
  Q_INVOKABLE void dismissWarning();
  void dismissWarning(FieldChanges& changes);

  // Warns if `node` is critical, and returns whether it is.
  bool warnIfCritical(FieldChanges& changes, const DiskNode& node);
  // Move items and return those that could not be moved. The first never changes lastTrashed(), the
  // second sets it if the item moves, the third always sets it.
  Failures move(const std::string& path);
  Failures moveRecording(FieldChanges& changes, const std::string& path);
  Failures moveAllRecording(FieldChanges& changes, const std::vector<std::string>& paths);
  // Puts back the items of the last move, and clears lastTrashed(). Returns those that could not be
  // put back.
  Failures putBack(FieldChanges& changes);

  // How far the batch is that moves to the Trash.
  struct Progress {
    std::size_t done = 0;  // items that were tried
    std::size_t all = 0;
    bool isStopping = false;

    friend bool operator==(const Progress&, const Progress&) = default;
  };
  // Empty while no batch moves.
  const std::optional<Progress>& progress() const { return progress_; }
  bool isMoving() const;
  // Starts to move items on a worker queue, after the Trash has been emptied if that is under way;
  // must not be called while a batch moves. At its end lastTrashed() becomes what has moved, unless
  // no item was tried; `take` gets the same step.
  using TakeBatch = std::function<void(FieldChanges& changes, const TrashBatch::Moved& moved)>;
  void moveBatch(std::vector<TrashBatch::Item> items, TakeBatch take);
  // Ends the batch after the item that moves now; if it still waits, at once. Does nothing without
  // a batch.
  Q_INVOKABLE void stopBatch();

  // Asks where to save an archive, and starts it, without the nodes that no longer exist. Returns
  // the number of its items: 0 if nothing exists or the user cancels; the object may be gone then.
  // `take` is called when the archive has ended.
  using TakeArchive = std::function<void(const ZipEngine::Archived& archived)>;
  std::size_t archive(const std::vector<DiskNode>& nodes, TakeArchive take);
  // For quitting: cancels every archive, also those requested later, and moves nothing. Does not
  // wait; a worker stops within milliseconds.
  void giveUpZips();
  // Whether a worker still makes an archive, cancelled or not.
  bool isZipping() const { return zips_->areAny(); }

  // Asks the system, on a worker queue, to empty the Trash.
  void emptyTrash(std::function<void(DiskSpace::TrashEmptying emptying)> take);
  // Whether the system may still have to find out what it is to delete.
  bool isEmptying() const { return emptyings_ != 0; }

  // Cancels the archives and the batch, and drops all results. The item that moves now still moves.
  void end();

 signals:
  void lastTrashedChanged();
  void criticalWarningChanged();
  void movingChanged();
  void progressChanged();

 private:
  std::string nameForZip() const;
  void setDone(std::size_t done);
  void startWaitingBatch();
  void takeBatch(const TrashBatch::Moved& moved, const TakeBatch& take);

  const SessionServices& services_;
  std::shared_ptr<ZipsInWork> zips_ = std::make_shared<ZipsInWork>();
  Jobs jobs_;
  std::vector<TrashedItem> lastTrashed_;
  std::optional<DiskNode> criticalWarning_;
  std::optional<Progress> progress_;
  std::shared_ptr<CancelFlag> stop_;  // of the batch that moves
  std::size_t emptyings_ = 0;
  std::function<void()> waitingBatch_;  // starts the batch that waits for the end of an emptying
};

}  // namespace tessaly
