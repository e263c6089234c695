// The one long-lived state object of the program. Its fields are in its parts, which views observe;
// the operations that change more than one part are here.
//
// All of it is used on the main thread only. Work runs on the worker queues of the Dispatch, and
// its results come back by the main queue.
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

  // Brings back what the last run has left: settings, and the last tree with all that goes with it.
  // Asks how full the disk is and what is mounted.
  explicit ScanSession(Services services, QObject* parent = nullptr);
  // Ends.
  ~ScanSession() override;

  // Stops all background work without waiting for it, and drops its results. For a program that is
  // about to end; not to be used on afterwards.
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

  // The user's home directory, by which places are told to be critical.
  const std::string& homeDirectory() const { return services_.homeDirectory; }

  // Scanning.
  void scan(const std::string& root);
  Q_INVOKABLE void scanHome();
  Q_INVOKABLE void rescan();
  Q_INVOKABLE void chooseFolder();

  // Asks for a folder, and compares it with the scan's root, whatever of that is on screen. Nothing
  // happens without a tree.
  Q_INVOKABLE void compareWithFolder();
  // Watches the folder on screen in place of the one that is watched; does nothing without a tree.
  Q_INVOKABLE void startWatch();

  // Moving about in the finished tree.
  void open(const DiskNode& node);
  void expandPackage(const DiskNode& node);
  void focusPath(const std::string& path);

  Q_INVOKABLE void selectAllCurrent();
  Q_INVOKABLE void queueSelected();
  // Moves all of the cleanup queue to the Trash.
  Q_INVOKABLE void emptyQueue();

  // Archives the items where the user wants it, then moves those to the Trash that are still what
  // was archived; warns, and does nothing, where one of them is critical. Nothing moves unless the
  // archive is complete and still stands where it was made.
  void zipThenTrash(std::vector<DiskNode> nodes);

  // Moves what has the focus, or else the node on screen, to the Trash; warns, and moves nothing,
  // where it is critical.
  Q_INVOKABLE void trashFocused();
  // Moves one item to the Trash without a record, so that undoTrash() does not know of it; warns,
  // and moves nothing, where it is critical. Takes the node's menu away.
  void trash(const DiskNode& node);
  // Moves the item of the warning all the same, without a record.
  Q_INVOKABLE void overruleWarning();
  // Puts back what the last move took.
  Q_INVOKABLE void undoTrash();
  // Asks the system, on a worker queue, to empty the Trash. Whatever comes of it, `ended` is then
  // called on the main thread, unless the session is gone, and the disk is looked at anew.
  void emptyTrash(std::function<void()> ended);

  // Writes a report on the node on screen where the user wants it.
  Q_INVOKABLE void exportJSON();

 private:
  void restore();
  void applyScanResult(const ScanRun::Walked& walked);
  void takeArchive(const ZipEngine::Archived& archived);
  void trashArchived(const ZipEngine::Archived& archived);
  void moveWithoutRecord(FieldChanges& changes, const DiskNode& node);
  void announceAndRescan(FieldChanges& changes);
  void announceAndLookAgain(FieldChanges& changes);

  // The parts as QML is given them.
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
  Jobs expansions_;
};

}  // namespace tessaly
