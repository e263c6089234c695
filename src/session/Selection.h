// The focus and the selection on the map. Nodes are identified by their paths; a remainder is never
// selected.
//
// Main thread only.
#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include <QObject>

#include "platform/Pasteboard.h"
#include "scan/DiskNode.h"
#include "session/Messages.h"

namespace tessaly {

class Selection : public QObject {
  Q_OBJECT

 public:
  // `pasteboard` must outlive the selection.
  Selection(Pasteboard& pasteboard, Flash flash);

  const std::optional<DiskNode>& focused() const { return focused_; }
  void setFocused(std::optional<DiskNode> node);
  void setFocused(FieldChanges& changes, std::optional<DiskNode> node);
  const std::set<std::string>& selected() const { return selected_; }
  const std::vector<DiskNode>& selectedNodes() const { return selectedNodes_; }

  void selectNodes(const std::vector<DiskNode>& nodes, bool additive);
  void toggleSelect(const DiskNode& node);
  Q_INVOKABLE void clearSelection();
  void clearSelection(FieldChanges& changes);

  // Copies the paths of the selected nodes, or else of the focused one, one per line.
  void copySelectedPaths();
  // The same with `other` in place of the focused node.
  void copySelectedPaths(const std::optional<DiskNode>& other);

 signals:
  void focusedChanged();
  void selectionChanged();  // selected and selectedNodes, which always change together

 private:
  Pasteboard& pasteboard_;
  Flash flash_;
  std::optional<DiskNode> focused_;
  std::set<std::string> selected_;
  std::vector<DiskNode> selectedNodes_;
};

}  // namespace tessaly
