// The items that wait to be moved to the Trash, and the panel that lists them.
//
// Main thread only.
#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include <QObject>

#include "scan/DiskNode.h"
#include "session/FieldChanges.h"

namespace tessaly {

class CleanupQueue : public QObject {
  Q_OBJECT
  Q_PROPERTY(bool queueOpen READ queueOpen WRITE setQueueOpen NOTIFY queueOpenChanged)
  Q_PROPERTY(
      bool queueMinimized READ queueMinimized WRITE setQueueMinimized NOTIFY queueMinimizedChanged)

 public:
  // No two of them have the same path, and none stands for many items.
  const std::vector<DiskNode>& queue() const { return queue_; }
  bool queueOpen() const { return queueOpen_; }
  void setQueueOpen(bool open);
  bool queueMinimized() const { return queueMinimized_; }
  void setQueueMinimized(bool minimized);

  // Appends the node and unfolds the panel; does nothing where it waits already.
  void addToQueue(const DiskNode& node);
  void addToQueue(FieldChanges& changes, const DiskNode& node);
  void removeFromQueue(const std::string& path);
  void removeFromQueue(FieldChanges& changes, const std::unordered_set<std::string>& paths);
  // Lets all of it go and closes the panel; moves nothing.
  Q_INVOKABLE void clearQueue();
  void clearQueue(FieldChanges& changes);

 signals:
  void queueChanged();
  void queueOpenChanged();
  void queueMinimizedChanged();

 private:
  std::vector<DiskNode> queue_;
  bool queueOpen_ = false;
  bool queueMinimized_ = false;
};

}  // namespace tessaly
