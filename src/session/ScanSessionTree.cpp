// Navigation in a finished tree, and the operations on the part of it that is on screen.

#include <cstddef>
#include <optional>
#include <utility>

#include <QPointer>

#include "platform/AtomicFile.h"
#include "platform/FileAccess.h"
#include "platform/WriteNote.h"
#include "scan/ExportReport.h"
#include "scan/Format.h"
#include "scan/Package.h"
#include "scan/Remainder.h"
#include "scan/ShownName.h"
#include "session/ScanSession.h"

namespace tessaly {

void ScanSession::open(const DiskNode& node) {
  if (isRemainder(node)) return;
  const bool hasChildren = !node.children().empty();
  if (!hasChildren && isPackageName(node.name())) {
    expandPackage(node);
    return;
  }
  if (!node.isDir() || !hasChildren) return;
  FieldChanges changes;
  selection_->clearSelection(changes);
  navigation_->push(changes, node);
  changes.announce();
}

void ScanSession::expandPackage(const DiskNode& node) {
  if (isRemainder(node)) return;
  expansions_.start(
      Dispatch::Queue::userInitiated,
      [path = node.path(), walk = services_.walk](const Job& job) {
        DiskScanner::Callbacks callbacks;
        // The user cannot cancel this walk; only the end of the session does.
        callbacks.isCancelled = job.cancelTest();
        DiskScanner::Options options;
        options.expandPackages = true;
        return walk(path, callbacks, options);
      },
      [this](const DiskNode& tree) {
        FieldChanges changes;
        selection_->clearSelection(changes);
        navigation_->push(changes, tree);
        changes.announce();
      });
  messages_->flash("Opening package " + std::string(node.name()) + "…");
}

void ScanSession::focusPath(const std::string& path) {
  if (navigation_->stack().empty()) {
    services_.workspace.reveal({path});
    return;
  }
  std::optional<std::vector<DiskNode>> chain =
      ScanInsights::chain(navigation_->stack().front(), path);
  if (!chain) {
    // The tree leaves this path out, or never had it.
    services_.workspace.reveal({path});
    return;
  }
  const DiskNode target = chain->back();
  if (isRemainder(target)) {
    // A file of this path may exist even so, one that the tree leaves out.
    if (FileAccess::ofMachine().kindOf(path) != FileAccess::Kind::nothing) {
      services_.workspace.reveal({path});
    }
    return;
  }
  // A file is shown in the map of its folder.
  if (chain->size() > 1 && !target.isDir()) chain->pop_back();

  FieldChanges changes;
  navigation_->showChain(changes, std::move(*chain));
  selection_->setFocused(changes, target);
  shown_->setVizMode(changes, VizMode::treemap);
  shown_->setPane(changes, MainPane::map);
  changes.announce();
}

void ScanSession::selectAllCurrent() {
  const std::optional<DiskNode> current = navigation_->current();
  if (!current) return;
  std::vector<DiskNode> nodes;
  for (const DiskNode& child : current->children()) {
    if (!isRemainder(child)) nodes.push_back(child);
  }
  const QPointer<ScanSession> session(this);
  selection_->selectNodes(nodes, false);
  if (session && !nodes.empty()) messages_->flash("Selected " + std::to_string(nodes.size()));
}

void ScanSession::queueSelected() {
  const std::size_t count = selection_->selectedNodes().size();
  if (count == 0) return;
  FieldChanges changes;
  for (const DiskNode& node : selection_->selectedNodes()) cleanupQueue_->addToQueue(changes, node);
  selection_->clearSelection(changes);
  messages_->flash(changes, "Queued " + Format::counted(count, "item"));
  changes.announce();
}

void ScanSession::exportJSON() {
  const std::optional<DiskNode> node = navigation_->current();
  if (!node) return;
  const QPointer<ScanSession> session(this);
  const std::optional<std::string> path =
      services_.savePanel.chooseFile({.fileName = "marrow-" + shownName(*node) + ".json",
                                      .extension = "json",
                                      .canCreateDirectories = true});
  if (!session || !path) return;
  // The user sees the tree that is on screen by now, so the report is on that.
  const std::optional<DiskNode> shown = navigation_->current();
  if (!shown) return;
  const WriteNote place = WriteNote::of(
      *path, services_.supportDirectory ? *services_.supportDirectory : ScanStore::supportDir());
  // A failure is not shown; an existing file stays.
  static_cast<void>(AtomicFile::replace(*path, ExportReport::json(*shown),
                                        AtomicFile::Durability::synced, AtomicFile::Access::usual));
}

}  // namespace tessaly
