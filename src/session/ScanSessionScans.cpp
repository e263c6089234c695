// Scans, and what uses the tree of one: comparison and watch.

#include <optional>
#include <utility>

#include <QPointer>

#include "scan/Format.h"
#include "scan/ShownName.h"
#include "session/ScanSession.h"

namespace tessaly {

void ScanSession::scan(const std::string& root) {
  FieldChanges changes;
  shown_->setPane(changes, MainPane::map);
  run_->start(changes, root, choices_->scanOptions(),
              [this](const ScanRun::Walked& walked) { applyScanResult(walked); });
  changes.announce();
}

void ScanSession::scanHome() {
  scan(services_.homeDirectory);
}

void ScanSession::rescan() {
  // A copy, since the scan assigns the original.
  const std::string root = run_->scanRoot();
  if (!root.empty()) scan(root);
}

void ScanSession::chooseFolder() {
  const QPointer<ScanSession> session(this);
  const std::optional<std::string> folder =
      services_.folderPanel.chooseFolder({.prompt = "Scan", .message = "Choose a folder to map."});
  // The panel ran the event loop, so the session may be gone.
  if (session && folder) scan(*folder);
}

void ScanSession::restore() {
  const std::optional<DiskNode> tree = ScanStore::loadTree(services_.supportDirectory);
  if (!tree) return;
  const std::string root =
      services_.prefs.defaults().text(ScanStore::lastScanRootKey).value_or(tree->path());
  // Nothing is connected yet, so no signal is needed.
  FieldChanges changes;
  navigation_->showTree(changes, *tree);
  run_->restore(changes, root);
  result_->restore(changes, *tree, root);
}

void ScanSession::applyScanResult(const ScanRun::Walked& walked) {
  const DiskNode& tree = walked.tree;
  const std::string& root = walked.root;
  FieldChanges changes;
  result_->takeGrowth(changes, tree, root);
  services_.prefs.defaults().setText(ScanStore::lastScanRootKey, root);
  ScanStore::saveTree(tree, services_.supportDirectory);
  choices_->pushRecent(changes, root);
  machine_->refreshVolumes(changes);

  navigation_->showTree(changes, tree);
  run_->complete(changes);
  const std::chrono::duration<double> date = services_.date().time_since_epoch();
  result_->takeFigures(changes, tree, root, run_->duration().count(), walked.unreadable,
                       date.count());

  machine_->refreshDisk(changes);
  messages_->flash(changes, "Scan complete — " + Format::bytes(tree.size()));
  services_.icon.requestAttention();
  findings_->analyse({.tree = tree,
                      .root = root,
                      .idleScope = PostScanAnalysis::idleScope(root, services_.homeDirectory)});
  changes.announce();
}

void ScanSession::compareWithFolder() {
  const QPointer<ScanSession> session(this);
  const std::optional<std::string> folder = services_.folderPanel.chooseFolder(
      {.prompt = "Compare", .message = "Choose a folder to compare with the current map."});
  // The panel ran the event loop: the session may be gone, and the tree may be another.
  if (!session || !folder || navigation_->stack().empty()) return;
  FieldChanges changes;
  shown_->setVizMode(changes, VizMode::compare);
  comparison_->compare(changes, navigation_->stack().front(), *folder);
  changes.announce();
}

void ScanSession::startWatch() {
  const std::optional<DiskNode> node = navigation_->current();
  if (node) watch_->startWatch(node->path(), shownName(*node));
}

}  // namespace tessaly
