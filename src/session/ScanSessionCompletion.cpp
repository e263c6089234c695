// What a finished scan leaves behind, on screen and on disk, and what the next run brings back.

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

#include <QPointer>

#include "scan/Format.h"
#include "scan/ScanDiff.h"
#include "session/DiskAlert.h"
#include "session/FieldChanges.h"
#include "session/ScanSession.h"
#include "system/MachineFigures.h"

namespace tessaly {

namespace {

// Sizes are kept of a root, its children and theirs.
constexpr int keptLevels = 2;
constexpr std::int64_t smallestGrowth = 1048576;
constexpr int largestLimit = 80;
constexpr int emptyFoldersLimit = 200;

}  // namespace

// An answer that is there at once belongs to the step that asked for it. One that comes later is a
// step of its own.
template <class Answer, class Use>
void ScanSession::askFor(FieldChanges& changes, Question<Answer> question, Use use) {
  const auto step = std::make_shared<FieldChanges*>(&changes);
  (services_.figures->*question)([session = QPointer(this), step, use](const Answer& answer) {
    if (!session) return;
    if (*step != nullptr) {
      std::invoke(use, *session, **step, answer);
      return;
    }
    FieldChanges own(*session);
    std::invoke(use, *session, own, answer);
    own.announce();
  });
  *step = nullptr;
}

void ScanSession::restore() {
  // Nobody can be listening yet, so that fields are set without a word.
  recents_ = ScanStore::recents(settings());
  pins_ = ScanStore::pins(settings());
  excludes_ = ScanStore::excludes(settings());
  FieldChanges changes(*this);
  askFor(changes, &MachineFigures::askDisk,
         [](ScanSession& session, FieldChanges& step, const DiskUsage& disk) {
           step.set(session.disk_, disk, &ScanSession::diskChanged);
         });
  readVolumes(changes);

  const std::optional<DiskNode> tree = ScanStore::loadTree(services_.supportDirectory);
  if (!tree) return;
  const std::string root = settings().text(ScanStore::lastScanRootKey).value_or(tree->path());
  stack_ = {*tree};
  scanRoot_ = root;
  status_ = ScanStatus::complete;
  takeGrowth(changes, ScanStore::loadSizes(root, services_.supportDirectory),
             ScanDiff::flatten(*tree, 0, keptLevels));
  takeInsights(changes, *tree, 0);
  history_ = ScanStore::loadHistory(root, services_.supportDirectory);
}

void ScanSession::applyScanResult(const DiskNode& result, const std::string& root,
                                  const UnreadableItems& unreadable) {
  FieldChanges changes(*this);
  const ScanStore::Directory& directory = services_.supportDirectory;

  const PathSizes sizes = ScanDiff::flatten(result, 0, keptLevels);
  takeGrowth(changes, ScanStore::loadSizes(root, directory), sizes);
  ScanStore::saveSizes(sizes, root, directory);
  settings().setText(ScanStore::lastScanRootKey, root);
  ScanStore::saveTree(result, directory);
  ScanStore::pushRecent(root, settings(), ScanStore::recentsLimit);
  changes.set(recents_, ScanStore::recents(settings()), &ScanSession::recentsChanged);
  readVolumes(changes);

  // Never compared with the old one: a new scan brings a new tree, even if it looks the same.
  stack_ = {result};
  changes.note(&ScanSession::stackChanged);
  changes.set(status_, ScanStatus::complete, &ScanSession::statusChanged);
  changes.set(progress_, "", &ScanSession::progressChanged);
  changes.set(scanPercent_, 1.0, &ScanSession::scanPercentChanged);

  const Clock::time_point now = services_.now();
  const std::chrono::duration<double> duration = now - scanStarted_.value_or(now);
  takeInsights(changes, result, duration.count());
  changes.set(unreadable_, unreadable, &ScanSession::unreadableChanged);

  const std::chrono::duration<double> date = services_.date().time_since_epoch();
  ScanStore::appendHistory({.at = date.count(), .bytes = result.size(), .files = scanStats_->files},
                           root, directory);
  changes.set(history_, ScanStore::loadHistory(root, directory), &ScanSession::historyChanged);

  readDisk(changes);
  showToast(changes, "Scan complete — " + Format::bytes(result.size()));
  services_.icon.requestAttention();
  analyse(result, root);
  changes.announce();
}

void ScanSession::takeGrowth(FieldChanges& changes, const PathSizes& older,
                             const PathSizes& newer) {
  std::vector<ScanDelta> deltas = ScanDiff::compare(older, newer, smallestGrowth);
  if (deltas == deltas_) return;
  deltas_ = std::move(deltas);
  grewPaths_.clear();
  for (const ScanDelta& delta : deltas_) grewPaths_.insert(delta.path);
  changes.note(&ScanSession::deltasChanged);
}

void ScanSession::takeInsights(FieldChanges& changes, const DiskNode& tree, double duration) {
  changes.set(scanStats_, ScanInsights::stats(tree, duration), &ScanSession::scanStatsChanged);
  changes.set(largest_, ScanInsights::largestFiles(tree, largestLimit),
              &ScanSession::largestChanged);
  changes.set(emptyFolders_, ScanInsights::emptyFolders(tree, emptyFoldersLimit),
              &ScanSession::emptyFoldersChanged);
}

void ScanSession::refreshDisk() {
  FieldChanges changes(*this);
  readDisk(changes);
  changes.announce();
}

void ScanSession::readDisk(FieldChanges& changes) {
  askFor(changes, &MachineFigures::askDisk, &ScanSession::takeDisk);
  askFor(changes, &MachineFigures::askTrashCount,
         [](ScanSession& session, FieldChanges& step, std::int64_t count) {
           step.set(session.trashCount_, count, &ScanSession::trashCountChanged);
         });
}

void ScanSession::readVolumes(FieldChanges& changes) {
  askFor(changes, &MachineFigures::askVolumes,
         [](ScanSession& session, FieldChanges& step, const std::vector<VolumeMount>& volumes) {
           step.set(session.volumes_, volumes, &ScanSession::volumesChanged);
         });
}

void ScanSession::takeDisk(FieldChanges& changes, const DiskUsage& disk) {
  changes.set(disk_, disk, &ScanSession::diskChanged);
  services_.icon.setBadge(Format::fixed(disk_.usedPercent, 0) + "%");
  DiskAlert::check(disk_.usedPercent, services_.prefs, settings(), services_.notifications,
                   services_.date());
}

std::string ScanSession::currentVolumeName() const {
  if (!stack_.empty()) {
    const std::string path = stack_.back().path();
    for (const VolumeMount& volume : volumes_) {
      if (volume.path != "/" && path.starts_with(volume.path)) return volume.name;
    }
  }
  return "Macintosh HD";
}

}  // namespace tessaly
