// The one long-lived state object of the program. Every pane observes its fields through their
// signals, and every lasting action goes through it.
//
// All of it is used on the main thread only. Walks run on a worker queue of the Dispatch and come
// home by its main queue; a result that a newer scan or a cancel has overtaken is dropped.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include <QObject>

#include "platform/ApplicationIcon.h"
#include "platform/Dispatch.h"
#include "platform/FolderPanel.h"
#include "platform/NotificationCenter.h"
#include "platform/Pasteboard.h"
#include "platform/SavePanel.h"
#include "platform/TrashMover.h"
#include "platform/Workspace.h"
#include "reclaim/FailureText.h"
#include "reclaim/Trash.h"
#include "reclaim/ZipEngine.h"
#include "scan/DiskNode.h"
#include "scan/DiskScanner.h"
#include "scan/FolderCompareRow.h"
#include "scan/FolderSnapshot.h"
#include "scan/FolderWatch.h"
#include "scan/HistoryPoint.h"
#include "scan/ScanDelta.h"
#include "scan/ScanInsights.h"
#include "scan/UnreadableItems.h"
#include "session/CancelFlag.h"
#include "session/MarrowPrefs.h"
#include "session/PostScanAnalysis.h"
#include "session/ScanStore.h"
#include "session/ZipsInWork.h"
#include "system/DiskUsage.h"
#include "system/MachineFigures.h"
#include "system/Shell.h"
#include "system/VolumeMount.h"
#include "treemap/BloatFilter.h"

namespace tessaly {

enum class MainPane { map, apps, monitor };
enum class ScanStatus { idle, scanning, complete, error };
enum class VizMode {
  treemap,
  list,
  grew,
  duplicates,
  compare,
  largest,
  aliases,
  cloud,
  clones,
  history,
  safe
};

class ScanSession : public QObject {
  Q_OBJECT
  // What views bind to directly. No texts: those hold names, and displayText() alone shows names.
  Q_PROPERTY(double scanPercent READ scanPercent NOTIFY scanPercentChanged)
  Q_PROPERTY(bool searchOpen READ searchOpen WRITE setSearchOpen NOTIFY searchOpenChanged)
  Q_PROPERTY(bool aiOpen READ aiOpen WRITE setAiOpen NOTIFY aiOpenChanged)
  Q_PROPERTY(bool ocrOpen READ ocrOpen WRITE setOcrOpen NOTIFY ocrOpenChanged)
  Q_PROPERTY(bool queueOpen READ queueOpen WRITE setQueueOpen NOTIFY queueOpenChanged)
  Q_PROPERTY(
      bool queueMinimized READ queueMinimized WRITE setQueueMinimized NOTIFY queueMinimizedChanged)
  Q_PROPERTY(bool heatmap READ heatmap WRITE setHeatmap NOTIFY heatmapChanged)
  Q_PROPERTY(bool watching READ watching NOTIFY watchingChanged)

 public:
  using Clock = std::chrono::steady_clock;

  static constexpr std::size_t failuresLimit = 50;

  using Walk = std::function<DiskNode(const std::string& root, const DiskScanner::Callbacks&,
                                      const DiskScanner::Options&)>;
  using Archive = std::function<ZipEngine::Archived(const ZipEngine::Request&)>;
  using Snapshot =
      std::function<FolderSnapshot(const std::string& path, const FolderWatch::IsCancelled&)>;

  // What the session asks of the machine. All of it outlives the session, the Dispatch its walks
  // too. Where a function is not given, the named one is taken.
  struct Services {
    Dispatch& dispatch;
    FolderPanel& folderPanel;
    SavePanel& savePanel;
    Workspace& workspace;
    Pasteboard& pasteboard;
    ApplicationIcon& icon;
    NotificationCenter& notifications;
    TrashMover& trash;
    MarrowPrefs& prefs;  // and the settings that they live in
    std::string homeDirectory;
    ScanStore::Directory supportDirectory = {};                        // ScanStore::supportDir()
    PostScanAnalysis::Stages analysis = {};                            // none
    Walk walk = {};                                                    // DiskScanner::scan
    Archive archive = {};                                              // ZipEngine::archive
    Snapshot snapshot = {};                                            // FolderWatch::snapshot
    Shell::Run run = {};                                               // Shell::run
    std::function<std::optional<DiskUsage>()> volumeUsage = {};        // DiskSpace::volumeUsage
    std::function<Clock::time_point()> now = {};                       // the steady clock
    std::function<std::chrono::system_clock::time_point()> date = {};  // the system's clock
    MachineFigures* figures = nullptr;  // ToolFigures of `run` and `volumeUsage`
  };

  // Brings back what the last run has left: settings, and the last tree with all that goes with it.
  // Asks how full the disk is and what is mounted.
  explicit ScanSession(Services services, QObject* parent = nullptr);
  // Ends.
  ~ScanSession() override;

  // Stops the walks, the watch and the archives that still run, without waiting for them; what they
  // bring home is dropped. For a program that is about to end; not to be used on afterwards.
  void end();

  // Scanning.
  void scan(const std::string& root);
  Q_INVOKABLE void scanHome();
  Q_INVOKABLE void cancel();
  Q_INVOKABLE void rescan();
  Q_INVOKABLE void chooseFolder();

  // Asks for a folder, and compares it with the scan's root, whatever of that is on screen. The
  // rows of an earlier comparison stay until it is done. Nothing happens without a tree.
  Q_INVOKABLE void compareWithFolder();

  // Navigation in the finished tree.
  std::optional<DiskNode> current() const;  // the node on screen: the last of stack()
  Q_INVOKABLE void back();
  Q_INVOKABLE void jump(int index);
  void open(const DiskNode& node);
  void expandPackage(const DiskNode& node);
  void focusPath(const std::string& path);
  // Shows `node` in the file viewer of the desktop.
  void reveal(const DiskNode& node);

  // Selection on the map. Nodes are told apart by their paths.
  void selectNodes(const std::vector<DiskNode>& nodes, bool additive);
  void toggleSelect(const DiskNode& node);
  Q_INVOKABLE void selectAllCurrent();
  Q_INVOKABLE void clearSelection();
  // The paths of what is selected, or else of what has the focus, a line each.
  Q_INVOKABLE void copySelectedPaths();

  // The cleanup queue.
  void addToQueue(const DiskNode& node);
  Q_INVOKABLE void queueSelected();
  void removeFromQueue(const std::string& path);
  // Lets all of it go; moves nothing.
  Q_INVOKABLE void clearQueue();
  // Moves all of it to the Trash.
  Q_INVOKABLE void emptyQueue();

  // Archives the items where the user wants it, then moves those to the Trash that are still what
  // was archived; warns, and does nothing, where one of them is critical. Nothing moves unless the
  // archive is complete and still stands where it was made.
  void zipThenTrash(std::vector<DiskNode> nodes);
  // For quitting: every archive that is being made, or is asked for later, is given up, which takes
  // some milliseconds, and nothing moves. Waits for nothing.
  void giveUpZips();
  // Whether a worker still makes an archive, given up or not.
  bool isZipping() const { return zips_->areAny(); }

  // Looks at the folder on screen every 20 seconds, and tells what in it has grown by a mebibyte or
  // more since the watch began. Replaces the watch that runs; does nothing without a tree.
  Q_INVOKABLE void startWatch();
  // Neither a scan nor a way through the tree does this.
  Q_INVOKABLE void stopWatch();
  // Looks once more, out of turn. Does nothing before the watch has its first look, and while it
  // looks.
  void pollWatch();

  // Moves what has the focus, or else the node on screen, to the Trash; warns, and moves nothing,
  // where it is critical.
  Q_INVOKABLE void trashFocused();
  // Moves one item to the Trash without a record, so that undoTrash() does not know of it; warns,
  // and moves nothing, where it is critical. Takes the node's menu away.
  void trash(const DiskNode& node);
  // The answers to the warning: move the item all the same, without a record, or leave it alone.
  // Nothing happens when there is no warning.
  Q_INVOKABLE void overruleWarning();
  Q_INVOKABLE void dismissWarning();
  // Puts back what the last move took.
  Q_INVOKABLE void undoTrash();
  // Asks the system, on a worker queue, to empty the Trash. Whatever comes of it, `ended` is then
  // called on the main thread, unless the session is gone, and the disk is looked at anew.
  void emptyTrash(std::function<void()> ended);

  // What the next scan leaves out, and what the map highlights.
  Q_INVOKABLE void addExclude();
  void removeExclude(const std::string& path);
  void toggleFilter(const std::string& id);
  void toggleSkip(const std::string& id);

  // Pins a folder, or takes its pin away.
  void togglePin(const std::string& path);

  // Writes a report on the node on screen where the user wants it.
  Q_INVOKABLE void exportJSON();

  // Asks anew how full the disk is and what lies in the Trash. Until they answer, the fields stay
  // as they are.
  void refreshDisk();
  // The name of the mounted volume that holds the node on screen.
  std::string currentVolumeName() const;

  // The user's home directory, by which places are told to be critical.
  const std::string& homeDirectory() const { return services_.homeDirectory; }

  // Shows a short message, and takes it away 2.8 seconds later unless a newer one stands there.
  void flash(const std::string& text);

  // Tells of something that failed and that the user has to know of. It stays, whatever else is
  // flashed, until it is dismissed. A later failure comes before it; once that one is dismissed,
  // this one is told again. The same text is told once.
  void tellFailure(const std::string& text);
  // Of the failure that is told, the latest one.
  Q_INVOKABLE void dismissFailure();

  // Fields, in declared order.
  MainPane pane() const { return pane_; }
  void setPane(MainPane pane);
  ScanStatus status() const { return status_; }
  const std::string& progress() const { return progress_; }
  double scanPercent() const { return scanPercent_; }  // 0 to 1
  const std::string& errorMessage() const { return errorMessage_; }
  const std::vector<DiskNode>& stack() const { return stack_; }  // scan root first
  VizMode vizMode() const { return vizMode_; }
  void setVizMode(VizMode mode);
  const std::vector<BloatFilter>& filters() const { return filters_; }
  void setFilters(std::vector<BloatFilter> filters);
  const std::vector<DiskNode>& queue() const { return queue_; }
  bool queueOpen() const { return queueOpen_; }
  void setQueueOpen(bool open);
  bool queueMinimized() const { return queueMinimized_; }
  void setQueueMinimized(bool minimized);
  bool searchOpen() const { return searchOpen_; }
  void setSearchOpen(bool open);
  const DiskUsage& disk() const { return disk_; }  // of the start-up volume
  std::int64_t trashCount() const { return trashCount_; }
  const std::string& scanRoot() const { return scanRoot_; }
  const std::optional<DiskNode>& menuNode() const { return menuNode_; }
  void setMenuNode(std::optional<DiskNode> node);
  const std::optional<DiskNode>& criticalWarning() const { return criticalWarning_; }
  void setCriticalWarning(std::optional<DiskNode> node);
  const std::vector<std::string>& recents() const { return recents_; }
  const std::vector<VolumeMount>& volumes() const { return volumes_; }
  // What has grown since the scan of this root before, and its paths.
  const std::vector<ScanDelta>& deltas() const { return deltas_; }
  const std::set<std::string>& grewPaths() const { return grewPaths_; }
  const std::optional<std::string>& toast() const { return toast_; }
  // What failed and was not dismissed, the latest last; never more than failuresLimit.
  const std::vector<std::string>& failures() const { return failures_; }
  // The latest of them.
  std::optional<std::string> failure() const;
  const std::optional<DiskNode>& focused() const { return focused_; }
  void setFocused(std::optional<DiskNode> node);
  const std::set<std::string>& selected() const { return selected_; }
  const std::vector<DiskNode>& selectedNodes() const { return selectedNodes_; }
  bool heatmap() const { return heatmap_; }
  void setHeatmap(bool on);
  const std::vector<FolderCompareRow>& compareRows() const { return compareRows_; }
  const std::string& compareLeftName() const { return compareLeftName_; }
  const std::string& compareRightName() const { return compareRightName_; }
  bool watching() const { return watching_; }
  const std::string& watchPath() const { return watchPath_; }
  // What has grown in the watched folder since the watch began, largest growth first.
  const std::vector<ScanDelta>& watchGrew() const { return watchGrew_; }
  const std::vector<std::string>& pins() const { return pins_; }
  // What the last move to the Trash took, in its order.
  const std::vector<TrashedItem>& lastTrashed() const { return lastTrashed_; }
  const std::optional<ScanStats>& scanStats() const { return scanStats_; }
  // What the scan of the tree could not read. Like scanStats() it belongs to the scan: to open a
  // folder or a package adds nothing, though a package is read anew for that. None of a tree that
  // the last run has left.
  const UnreadableItems& unreadable() const { return unreadable_; }
  const std::vector<DiskNode>& largest() const { return largest_; }
  const std::vector<DiskNode>& emptyFolders() const { return emptyFolders_; }
  const std::vector<std::string>& excludes() const { return excludes_; }
  void setExcludes(std::vector<std::string> excludes);
  // The scans of this root, oldest first.
  const std::vector<HistoryPoint>& history() const { return history_; }
  bool aiOpen() const { return aiOpen_; }
  void setAiOpen(bool open);
  bool ocrOpen() const { return ocrOpen_; }
  void setOcrOpen(bool open);

 signals:
  void paneChanged();
  void statusChanged();
  void progressChanged();
  void scanPercentChanged();
  void errorMessageChanged();
  void stackChanged();
  void vizModeChanged();
  void filtersChanged();
  void queueChanged();
  void queueOpenChanged();
  void queueMinimizedChanged();
  void searchOpenChanged();
  void diskChanged();
  void trashCountChanged();
  void scanRootChanged();
  void menuNodeChanged();
  void criticalWarningChanged();
  void recentsChanged();
  void volumesChanged();
  void deltasChanged();  // deltas and grewPaths, which always change together
  void toastChanged();
  void failureChanged();
  void focusedChanged();
  void selectionChanged();  // selected and selectedNodes, which always change together
  void heatmapChanged();
  void compareRowsChanged();
  void compareNamesChanged();  // the left and the right one, which always change together
  void watchingChanged();
  void watchPathChanged();
  void watchGrewChanged();
  void pinsChanged();
  void lastTrashedChanged();
  void scanStatsChanged();
  void unreadableChanged();
  void largestChanged();
  void emptyFoldersChanged();
  void excludesChanged();
  void historyChanged();
  void aiOpenChanged();
  void ocrOpenChanged();

 private:
  class FieldChanges;
  using Signal = void (ScanSession::*)();

  template <class Field>
  void setField(Field& field, Field value, Signal changed);

  void startWalk(const std::string& root);
  void finishWalk(std::uint64_t generation, const CancelFlag& flag, const DiskNode& result,
                  const std::string& root, const UnreadableItems& unreadable);
  void restore();
  void applyScanResult(const DiskNode& result, const std::string& root,
                       const UnreadableItems& unreadable);
  void analyse(const DiskNode& result, const std::string& root);
  void takeGrowth(FieldChanges& changes, const PathSizes& older, const PathSizes& newer);
  void takeInsights(FieldChanges& changes, const DiskNode& tree, double duration);
  void readDisk(FieldChanges& changes);
  void readVolumes(FieldChanges& changes);
  void takeDisk(FieldChanges& changes, const DiskUsage& disk);
  template <class Answer>
  using Question = void (MachineFigures::*)(MachineFigures::Take<Answer>);
  // `use` is given the session, the step that the answer belongs to, and the answer.
  template <class Answer, class Use>
  void askFor(FieldChanges& changes, Question<Answer> question, Use use);
  void showToast(FieldChanges& changes, const std::string& text);
  void addFailure(FieldChanges& changes, const std::string& text);
  void addFailures(FieldChanges& changes, const std::vector<Trash::Failure>& failures,
                   FailureText::Act act);
  void clearSelection(FieldChanges& changes);
  void enqueue(FieldChanges& changes, const DiskNode& node);
  void announceAndLookAgain(FieldChanges& changes);
  std::string nameForZip() const;
  void takeArchive(const ZipEngine::Archived& archived);
  void trashArchived(const ZipEngine::Archived& archived);
  void toggle(const std::string& id, bool BloatFilter::*which);
  void endWatch();
  void beginWatch(std::shared_ptr<const FolderSnapshot> baseline, const std::string& name);
  void tickWatchLater();
  void takeWatchGrowth(std::vector<ScanDelta> grown);
  SettingsStore& settings() const { return services_.prefs.defaults(); }

  Services services_;
  std::unique_ptr<MachineFigures> ownFigures_;
  std::uint64_t generation_ = 0;  // of the latest scan or cancel; a result of another is void
  std::shared_ptr<CancelFlag> cancelFlag_;  // of the latest scan
  std::optional<Clock::time_point> scanStarted_;
  std::shared_ptr<CancelFlag> sessionEnded_ = std::make_shared<CancelFlag>();
  std::shared_ptr<ZipsInWork> zips_ = std::make_shared<ZipsInWork>();
  // Of the watch that runs; null while none does. Once it is set, the timer and all looks under way
  // are void.
  std::shared_ptr<CancelFlag> watchEnded_;
  std::shared_ptr<const FolderSnapshot> watchBaseline_;
  bool isLooking_ = false;  // a look of the watch that runs is under way, the first one aside

  MainPane pane_ = MainPane::map;
  ScanStatus status_ = ScanStatus::idle;
  std::string progress_;
  double scanPercent_ = 0;
  std::string errorMessage_;
  std::vector<DiskNode> stack_;
  VizMode vizMode_ = VizMode::treemap;
  std::vector<BloatFilter> filters_;
  std::vector<DiskNode> queue_;
  bool queueOpen_ = false;
  bool queueMinimized_ = false;
  bool searchOpen_ = false;
  DiskUsage disk_;
  std::int64_t trashCount_ = 0;
  std::string scanRoot_;
  std::optional<DiskNode> menuNode_;
  std::optional<DiskNode> criticalWarning_;
  std::vector<std::string> recents_;
  std::vector<VolumeMount> volumes_;
  std::vector<ScanDelta> deltas_;
  std::set<std::string> grewPaths_;
  std::optional<std::string> toast_;
  std::vector<std::string> failures_;
  std::optional<DiskNode> focused_;
  std::set<std::string> selected_;
  std::vector<DiskNode> selectedNodes_;
  bool heatmap_ = false;
  std::vector<FolderCompareRow> compareRows_;
  std::string compareLeftName_;
  std::string compareRightName_;
  bool watching_ = false;
  std::string watchPath_;
  std::vector<ScanDelta> watchGrew_;
  std::vector<std::string> pins_;
  std::vector<TrashedItem> lastTrashed_;
  std::optional<ScanStats> scanStats_;
  UnreadableItems unreadable_;
  std::vector<DiskNode> largest_;
  std::vector<DiskNode> emptyFolders_;
  std::vector<std::string> excludes_;
  std::vector<HistoryPoint> history_;
  bool aiOpen_ = false;
  bool ocrOpen_ = false;
};

}  // namespace tessaly
