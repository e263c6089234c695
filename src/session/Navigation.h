// The user's position in the finished tree. Nodes are immutable values; only the stack changes.
//
// Main thread only.
#pragma once

#include <optional>
#include <vector>

#include <QObject>

#include "platform/Workspace.h"
#include "scan/DiskNode.h"
#include "session/FieldChanges.h"

namespace tessaly {

class Navigation : public QObject {
  Q_OBJECT

 public:
  // `workspace` must outlive the navigation.
  explicit Navigation(Workspace& workspace) : workspace_(workspace) {}

  const std::vector<DiskNode>& stack() const { return stack_; }  // scan root first
  // The node on screen: the last of stack().
  std::optional<DiskNode> current() const;

  Q_INVOKABLE void back();
  Q_INVOKABLE void jump(int index);
  // Shows `node` in the file viewer of the desktop.
  void reveal(const DiskNode& node);
  void reveal(const std::string& path);

  // Shows the root of a new tree. Announces it even if it equals the old one.
  void showTree(FieldChanges& changes, const DiskNode& tree);
  // Shows the last node of `chain`, which starts at the root.
  void showChain(FieldChanges& changes, std::vector<DiskNode> chain);
  // Enters `node`.
  void push(FieldChanges& changes, const DiskNode& node);

 signals:
  void stackChanged();

 private:
  Workspace& workspace_;
  std::vector<DiskNode> stack_;
};

}  // namespace tessaly
