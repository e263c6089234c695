// What is selected on the map, and what goes to the pasteboard. The set of paths and the list of
// nodes always change together.

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include <QPointer>

#include "scan/Format.h"
#include "scan/Remainder.h"
#include "session/FieldChanges.h"
#include "session/ScanSession.h"

namespace tessaly {

void ScanSession::selectNodes(const std::vector<DiskNode>& nodes, bool additive) {
  FieldChanges changes(*this);
  if (!additive) clearSelection(changes);
  bool hasChanged = false;
  std::optional<DiskNode> last;
  for (const DiskNode& node : nodes) {
    if (isRemainder(node)) continue;
    last = node;
    if (!selected_.insert(node.path()).second) continue;
    selectedNodes_.push_back(node);
    hasChanged = true;
  }
  if (hasChanged) changes.note(&ScanSession::selectionChanged);
  if (last) changes.set(focused_, last, &ScanSession::focusedChanged);
  changes.announce();
}

void ScanSession::toggleSelect(const DiskNode& node) {
  if (isRemainder(node)) return;
  FieldChanges changes(*this);
  const std::string path = node.path();
  if (selected_.erase(path) != 0) {
    std::erase_if(selectedNodes_, [&](const DiskNode& other) { return other.path() == path; });
  } else {
    selected_.insert(path);
    selectedNodes_.push_back(node);
  }
  changes.note(&ScanSession::selectionChanged);
  changes.set(focused_, node, &ScanSession::focusedChanged);
  changes.announce();
}

void ScanSession::selectAllCurrent() {
  if (stack_.empty()) return;
  std::vector<DiskNode> nodes;
  for (const DiskNode& child : stack_.back().children()) {
    if (!isRemainder(child)) nodes.push_back(child);
  }
  const QPointer<ScanSession> session(this);
  selectNodes(nodes, false);
  if (session && !nodes.empty()) flash("Selected " + std::to_string(nodes.size()));
}

void ScanSession::clearSelection() {
  FieldChanges changes(*this);
  clearSelection(changes);
  changes.announce();
}

void ScanSession::copySelectedPaths() {
  std::vector<std::string> paths;
  for (const DiskNode& node : selectedNodes_) paths.push_back(node.path());
  if (paths.empty() && focused_ && !isRemainder(*focused_)) paths.push_back(focused_->path());
  if (paths.empty()) return;
  std::string lines;
  for (const std::string& path : paths) {
    if (!lines.empty()) lines += '\n';
    lines += path;
  }
  services_.pasteboard.setText(lines);
  flash("Copied " + Format::counted(paths.size(), "path"));
}

void ScanSession::addToQueue(const DiskNode& node) {
  FieldChanges changes(*this);
  enqueue(changes, node);
  changes.announce();
}

void ScanSession::enqueue(FieldChanges& changes, const DiskNode& node) {
  if (isRemainder(node)) return;
  const std::string path = node.path();
  for (const DiskNode& queued : queue_) {
    if (queued.path() == path) return;
  }
  queue_.push_back(node);
  changes.note(&ScanSession::queueChanged);
  changes.set(queueOpen_, true, &ScanSession::queueOpenChanged);
  changes.set(queueMinimized_, false, &ScanSession::queueMinimizedChanged);
}

void ScanSession::queueSelected() {
  const std::size_t count = selectedNodes_.size();
  if (count == 0) return;
  FieldChanges changes(*this);
  for (const DiskNode& node : selectedNodes_) enqueue(changes, node);
  clearSelection(changes);
  showToast(changes, "Queued " + Format::counted(count, "item"));
  changes.announce();
}

void ScanSession::removeFromQueue(const std::string& path) {
  FieldChanges changes(*this);
  const auto removed =
      std::erase_if(queue_, [&](const DiskNode& node) { return node.path() == path; });
  if (removed != 0) changes.note(&ScanSession::queueChanged);
  if (queue_.empty()) changes.set(queueOpen_, false, &ScanSession::queueOpenChanged);
  changes.announce();
}

void ScanSession::clearQueue() {
  FieldChanges changes(*this);
  changes.set(queue_, std::vector<DiskNode>(), &ScanSession::queueChanged);
  changes.set(queueOpen_, false, &ScanSession::queueOpenChanged);
  changes.announce();
}

}  // namespace tessaly
