// What goes to the Trash and comes back, archived first or not. Nothing critical moves before the
// user was warned of it, except what waits in the cleanup queue.
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
#include "session/ZipsInWork.h"
#include "system/DiskSpace.h"

namespace tessaly {

class Removal : public QObject {
  Q_OBJECT

 public:
  using Failures = std::vector<Trash::Failure>;

  // `services` and what they name outlive the removal.
  explicit Removal(const SessionServices& services)
      : services_(services), jobs_(services.dispatch) {}

  // What the last move to the Trash took, in its order.
  const std::vector<TrashedItem>& lastTrashed() const { return lastTrashed_; }
  // The critical item that the user is warned of.
  const std::optional<DiskNode>& criticalWarning() const { return criticalWarning_; }
  void setCriticalWarning(std::optional<DiskNode> node);
  Q_INVOKABLE void dismissWarning();
  void dismissWarning(FieldChanges& changes);

  // Warns if `node` is critical, and then gives true.
  bool warnIfCritical(FieldChanges& changes, const DiskNode& node);
  // Move items. What refuses to move stays where it is, and is given back. The first keeps no
  // record, so that lastTrashed() stays; the second where the item moves; the third always.
  Failures move(const std::string& path);
  Failures moveRecording(FieldChanges& changes, const std::string& path);
  Failures moveAllRecording(FieldChanges& changes, const std::vector<std::string>& paths);
  // Puts back what the last move took, and forgets it. Gives what did not come back.
  Failures putBack(FieldChanges& changes);

  // Asks where an archive is to be made, and begins it. Leaves out what is not there any more.
  // Gives how many items it is of: 0 where there is nothing to archive, or the user does not want
  // to; the object may be gone then. `take` is called when the archive has ended.
  using TakeArchive = std::function<void(const ZipEngine::Archived& archived)>;
  std::size_t archive(const std::vector<DiskNode>& nodes, TakeArchive take);
  // For quitting: every archive that is being made, or is asked for later, is given up, which takes
  // some milliseconds, and nothing moves. Waits for nothing.
  void giveUpZips();
  // Whether a worker still makes an archive, given up or not.
  bool isZipping() const { return zips_->areAny(); }

  // Asks the system, on a worker queue, to empty the Trash.
  void emptyTrash(std::function<void(DiskSpace::TrashEmptying emptying)> take);

  // Gives up the archives and drops what still comes.
  void end();

 signals:
  void lastTrashedChanged();
  void criticalWarningChanged();

 private:
  std::string nameForZip() const;

  const SessionServices& services_;
  std::shared_ptr<ZipsInWork> zips_ = std::make_shared<ZipsInWork>();
  Jobs jobs_;
  std::vector<TrashedItem> lastTrashed_;
  std::optional<DiskNode> criticalWarning_;
};

}  // namespace tessaly
