#include "session/Selection.h"

#include <utility>

#include "scan/Format.h"
#include "scan/Remainder.h"

namespace tessaly {

Selection::Selection(Pasteboard& pasteboard, Flash flash)
    : pasteboard_(pasteboard), flash_(std::move(flash)) {}

void Selection::setFocused(std::optional<DiskNode> node) {
  setField(this, focused_, std::move(node), &Selection::focusedChanged);
}

void Selection::setFocused(FieldChanges& changes, std::optional<DiskNode> node) {
  changes.set(this, focused_, std::move(node), &Selection::focusedChanged);
}

void Selection::selectNodes(const std::vector<DiskNode>& nodes, bool additive) {
  FieldChanges changes;
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
  if (hasChanged) changes.note(this, &Selection::selectionChanged);
  if (last) setFocused(changes, last);
  changes.announce();
}

void Selection::toggleSelect(const DiskNode& node) {
  if (isRemainder(node)) return;
  FieldChanges changes;
  const std::string path = node.path();
  if (selected_.erase(path) != 0) {
    std::erase_if(selectedNodes_, [&](const DiskNode& other) { return other.path() == path; });
  } else {
    selected_.insert(path);
    selectedNodes_.push_back(node);
  }
  changes.note(this, &Selection::selectionChanged);
  setFocused(changes, node);
  changes.announce();
}

void Selection::clearSelection() {
  FieldChanges changes;
  clearSelection(changes);
  changes.announce();
}

void Selection::clearSelection(FieldChanges& changes) {
  if (selected_.empty()) return;
  selected_.clear();
  selectedNodes_.clear();
  changes.note(this, &Selection::selectionChanged);
}

void Selection::copySelectedPaths() {
  copySelectedPaths(focused_);
}

void Selection::copySelectedPaths(const std::optional<DiskNode>& other) {
  std::vector<std::string> paths;
  for (const DiskNode& node : selectedNodes_) paths.push_back(node.path());
  if (paths.empty() && other && !isRemainder(*other)) paths.push_back(other->path());
  if (paths.empty()) return;

  std::string lines;
  for (const std::string& path : paths) {
    if (!lines.empty()) lines += '\n';
    lines += path;
  }
  pasteboard_.setText(lines);
  FieldChanges changes;
  flash_(changes, "Copied " + Format::counted(paths.size(), "path"));
  changes.announce();
}

}  // namespace tessaly
