// The items queued for the Trash, and the panel that lists them.
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
  // Paths are unique; a remainder is never queued.
  const std::vector<DiskNode>& queue() const { return queue_; }
  bool queueOpen() const { return queueOpen_; }
  void setQueueOpen(bool open);
  bool queueMinimized() const { return queueMinimized_; }
  void setQueueMinimized(bool minimized);

  // Appends the node and expands the panel; does nothing if the node is queued already.
  void addToQueue(const DiskNode& node);
  void addToQueue(FieldChanges& changes, const DiskNode& node);
  void removeFromQueue(const std::string& path);
  void removeFromQueue(FieldChanges& changes, const std::unordered_set<std::string>& paths);
  // Removes all items and closes the panel; moves nothing to the Trash.
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
