// Moving about in a finished tree. Nodes are values and the tree never changes: only the stack
// does.

#include <cstddef>
#include <utility>

#include <QPointer>

#include "platform/FileAccess.h"
#include "scan/Package.h"
#include "scan/Remainder.h"
#include "session/FieldChanges.h"
#include "session/ScanSession.h"

namespace tessaly {

std::optional<DiskNode> ScanSession::current() const {
  if (stack_.empty()) return std::nullopt;
  return stack_.back();
}

void ScanSession::back() {
  if (stack_.size() >= 2) jump(static_cast<int>(stack_.size()) - 2);
}

void ScanSession::jump(int index) {
  if (index < 0 || static_cast<std::size_t>(index) >= stack_.size()) return;
  if (static_cast<std::size_t>(index) + 1 == stack_.size()) return;
  FieldChanges changes(*this);
  stack_.erase(stack_.begin() + index + 1, stack_.end());
  changes.note(&ScanSession::stackChanged);
  changes.announce();
}

void ScanSession::open(const DiskNode& node) {
  if (isRemainder(node)) return;
  const bool hasChildren = !node.children().empty();
  if (!hasChildren && isPackageName(node.name())) {
    expandPackage(node);
    return;
  }
  if (!node.isDir() || !hasChildren) return;
  FieldChanges changes(*this);
  clearSelection(changes);
  stack_.push_back(node);
  changes.note(&ScanSession::stackChanged);
  changes.announce();
}

void ScanSession::expandPackage(const DiskNode& node) {
  if (isRemainder(node)) return;
  Dispatch& dispatch = services_.dispatch;
  auto work = [&dispatch, session = QPointer(this), path = node.path(), walk = services_.walk,
               ended = sessionEnded_] {
    DiskScanner::Callbacks callbacks;
    // The user has no way to stop this walk; only the end of the session does.
    callbacks.isCancelled = [&ended = *ended] { return ended.isSet(); };
    DiskScanner::Options options;
    options.expandPackages = true;
    const DiskNode result = walk(path, callbacks, options);
    dispatch.async(Dispatch::Queue::main, [session, result] {
      if (!session) return;
      FieldChanges changes(*session);
      session->clearSelection(changes);
      session->stack_.push_back(result);
      changes.note(&ScanSession::stackChanged);
      changes.announce();
    });
  };
  dispatch.async(Dispatch::Queue::userInitiated, std::move(work));
  flash("Opening package " + std::string(node.name()) + "…");
}

void ScanSession::focusPath(const std::string& path) {
  if (stack_.empty()) {
    services_.workspace.reveal({path});
    return;
  }
  std::optional<std::vector<DiskNode>> chain = ScanInsights::chain(stack_.front(), path);
  if (!chain) {
    // Left out of the tree, or never in it.
    services_.workspace.reveal({path});
    return;
  }
  const DiskNode target = chain->back();
  if (isRemainder(target)) {
    // There may be an item of this path all the same, for which the tree has no room.
    if (FileAccess::ofMachine().kindOf(path) != FileAccess::Kind::nothing) {
      services_.workspace.reveal({path});
    }
    return;
  }
  // A file shows inside the map of its folder.
  if (chain->size() > 1 && !target.isDir()) chain->pop_back();

  FieldChanges changes(*this);
  changes.set(stack_, std::move(*chain), &ScanSession::stackChanged);
  changes.set(focused_, std::optional(target), &ScanSession::focusedChanged);
  changes.set(vizMode_, VizMode::treemap, &ScanSession::vizModeChanged);
  changes.set(pane_, MainPane::map, &ScanSession::paneChanged);
  changes.announce();
}

void ScanSession::reveal(const DiskNode& node) {
  if (isRemainder(node)) return;
  services_.workspace.reveal({node.path()});
}

void ScanSession::clearSelection(FieldChanges& changes) {
  if (selected_.empty()) return;
  selected_.clear();
  selectedNodes_.clear();
  changes.note(&ScanSession::selectionChanged);
}

}  // namespace tessaly
