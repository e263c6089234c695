// The state of the program. The fields are in its parts, which views observe; the operations that
// change more than one part are here.
//
// Main thread only. Work runs on the worker queues of the Dispatch, and its results return on the
// main queue.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <QObject>

#include "reclaim/ZipEngine.h"
#include "scan/DiskNode.h"
#include "session/Choices.h"
#include "session/CleanupQueue.h"
#include "session/Comparison.h"
#include "session/Findings.h"
#include "session/Jobs.h"
#include "session/ListedCopies.h"
#include "session/LiveWatch.h"
#include "session/MachineState.h"
#include "session/Messages.h"
#include "session/Navigation.h"
#include "session/Removal.h"
#include "session/ScanResult.h"
#include "session/ScanRun.h"
#include "session/Selection.h"
#include "session/SessionServices.h"
#include "session/Shown.h"

namespace tessaly {

class ScanSession : public QObject {
  Q_OBJECT
  Q_PROPERTY(tessaly::ScanRun* run READ runObject CONSTANT)
  Q_PROPERTY(tessaly::Navigation* navigation READ navigationObject CONSTANT)
  Q_PROPERTY(tessaly::Shown* shown READ shownObject CONSTANT)
  Q_PROPERTY(tessaly::Messages* messages READ messagesObject CONSTANT)
  Q_PROPERTY(tessaly::Selection* selection READ selectionObject CONSTANT)
  Q_PROPERTY(tessaly::CleanupQueue* cleanupQueue READ cleanupQueueObject CONSTANT)
  Q_PROPERTY(tessaly::Removal* removal READ removalObject CONSTANT)
  Q_PROPERTY(tessaly::LiveWatch* watch READ watchObject CONSTANT)
  Q_PROPERTY(tessaly::Choices* choices READ choicesObject CONSTANT)

 public:
  using Services = SessionServices;

  // Restores the settings, and the last tree with its data. Asks for the disk usage and the mounted
  // volumes.
  explicit ScanSession(Services services, QObject* parent = nullptr);
  // Calls end().
  ~ScanSession() override;

  // Cancels all background work without waiting for it, and drops its results. For a program that
  // is about to end; the session must not be used afterwards.
  void end();

  // The parts. They live as long as the session.
  ScanRun& run() const { return *run_; }
  Navigation& navigation() const { return *navigation_; }
  Shown& shown() const { return *shown_; }
  Messages& messages() const { return *messages_; }
  Selection& selection() const { return *selection_; }
  CleanupQueue& cleanupQueue() const { return *cleanupQueue_; }
  Removal& removal() const { return *removal_; }
  ScanResult& result() const { return *result_; }
  Comparison& comparison() const { return *comparison_; }
  LiveWatch& watch() const { return *watch_; }
  Findings& findings() const { return *findings_; }
  Choices& choices() const { return *choices_; }
  MachineState& machine() const { return *machine_; }

  // For the passes of a view, which cancels them when ended() is emitted.
  Dispatch& dispatch() const { return services_.dispatch; }
  const WinsPass::Engines& winsEngines() const { return services_.wins; }

  // The user's home directory; decides which paths are critical.
  const std::string& homeDirectory() const { return services_.homeDirectory; }

  // Scanning.
  void scan(const std::string& root);
  Q_INVOKABLE void scanHome();
  Q_INVOKABLE void rescan();
  Q_INVOKABLE void chooseFolder();

  // Asks for a folder, and compares it with the root of the scan, whichever folder of it is on
  // screen. Does nothing without a tree.
  Q_INVOKABLE void compareWithFolder();
  // Watches the folder on screen instead of the previous one; does nothing without a tree.
  Q_INVOKABLE void startWatch();

  // Navigation in the finished tree.
  void open(const DiskNode& node);
  void expandPackage(const DiskNode& node);
  void focusPath(const std::string& path);

  Q_INVOKABLE void selectAllCurrent();
  Q_INVOKABLE void queueSelected();
  // Moves all items of the cleanup queue to the Trash, but no copy that has changed since it was
  // listed as a duplicate.
  Q_INVOKABLE void emptyQueue();

  // Asks where to save an archive of the items, makes it, and moves those items to the Trash that
  // are unchanged since; if one of them is critical, warns and does nothing. Moves nothing unless
  // the archive is complete and still in its place.
  void zipThenTrash(std::vector<DiskNode> nodes);

  // Moves the focused item, or else the node on screen, to the Trash; warns and moves nothing if it
  // is critical.
  Q_INVOKABLE void trashFocused();
  // The same with this item.
  void trashRecording(const DiskNode& node);
  // Moves one item to the Trash without a record, so that undoTrash() ignores it; warns and moves
  // nothing if it is critical. Closes the node's menu.
  void trash(const DiskNode& node);
  // Moves the item of the warning despite it, without a record.
  Q_INVOKABLE void overruleWarning();
  // Puts back the items of the last move.
  Q_INVOKABLE void undoTrash();
  // Moves items to the Trash on a worker queue, whether they are critical or not, and updates the
  // disk usage; starts no rescan. `ended` is then called, unless the session is gone. Until then no
  // other operation moves anything to the Trash or back or empties it; they do nothing, and an
  // archive that is finished meanwhile waits for its turn. Does nothing while another batch moves,
  // and waits until the Trash has been emptied if that is under way.
  using BatchEnded = std::function<void(const TrashBatch::Moved& moved)>;
  void moveBatch(std::vector<TrashBatch::Item> items, BatchEnded ended);
  // Asks the system, on a worker queue, to empty the Trash. Whether or not that succeeds, `ended`
  // is then called on the main thread and the disk usage is updated, unless the session is gone.
  // Until then nothing is moved to the Trash, which could be deleted with the rest: a batch and an
  // archive wait, and the other operations show why they do nothing.
  void emptyTrash(std::function<void()> ended);

  // Asks where to save a report on the node on screen, and writes it.
  Q_INVOKABLE void exportJSON();

 signals:
  // By end().
  void ended();

 private:
  void restore();
  void applyScanResult(const ScanRun::Walked& walked);
  // Whether items may be moved to the Trash now. If they may not for a reason that no view shows,
  // shows it.
  bool mayMove(FieldChanges& changes);
  void takeArchive(const ZipEngine::Archived& archived);
  void takeWaitingArchives();
  void endBatch(FieldChanges& changes, const TrashBatch::Moved& moved, const BatchEnded& ended);
  void trashArchived(const ZipEngine::Archived& archived);
  void moveWithoutRecord(FieldChanges& changes, const DiskNode& node);
  void announceAndRescan(FieldChanges& changes);
  void announceAndLookAgain(FieldChanges& changes);

  // The parts, for QML.
  ScanRun* runObject() const { return run_.get(); }
  Navigation* navigationObject() const { return navigation_.get(); }
  Shown* shownObject() const { return shown_.get(); }
  Messages* messagesObject() const { return messages_.get(); }
  Selection* selectionObject() const { return selection_.get(); }
  CleanupQueue* cleanupQueueObject() const { return cleanupQueue_.get(); }
  Removal* removalObject() const { return removal_.get(); }
  LiveWatch* watchObject() const { return watch_.get(); }
  Choices* choicesObject() const { return choices_.get(); }

  Services services_;
  std::unique_ptr<MachineFigures> ownFigures_;
  std::unique_ptr<ScanRun> run_;
  std::unique_ptr<Navigation> navigation_;
  std::unique_ptr<Shown> shown_;
  std::unique_ptr<Messages> messages_;
  std::unique_ptr<Selection> selection_;
  std::unique_ptr<CleanupQueue> cleanupQueue_;
  std::unique_ptr<Removal> removal_;
  std::unique_ptr<ScanResult> result_;
  std::unique_ptr<Comparison> comparison_;
  std::unique_ptr<LiveWatch> watch_;
  std::unique_ptr<Findings> findings_;
  std::unique_ptr<Choices> choices_;
  std::unique_ptr<MachineState> machine_;
  ListedCopies copies_;
  Jobs expansions_;
  std::vector<ZipEngine::Archived> waitingArchives_;  // finished while nothing was to move
};

}  // namespace tessaly
