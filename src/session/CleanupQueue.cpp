#include "session/CleanupQueue.h"

#include <algorithm>

#include "scan/Remainder.h"

namespace tessaly {

void CleanupQueue::setQueueOpen(bool open) {
  setField(this, queueOpen_, open, &CleanupQueue::queueOpenChanged);
}

void CleanupQueue::setQueueMinimized(bool minimized) {
  setField(this, queueMinimized_, minimized, &CleanupQueue::queueMinimizedChanged);
}

void CleanupQueue::addToQueue(const DiskNode& node) {
  FieldChanges changes;
  addToQueue(changes, node);
  changes.announce();
}

void CleanupQueue::addToQueue(FieldChanges& changes, const DiskNode& node) {
  if (isRemainder(node)) return;
  const std::string path = node.path();
  for (const DiskNode& queued : queue_) {
    if (queued.path() == path) return;
  }
  queue_.push_back(node);
  changes.note(this, &CleanupQueue::queueChanged);
  changes.set(this, queueOpen_, true, &CleanupQueue::queueOpenChanged);
  changes.set(this, queueMinimized_, false, &CleanupQueue::queueMinimizedChanged);
}

void CleanupQueue::removeFromQueue(const std::string& path) {
  FieldChanges changes;
  removeFromQueue(changes, {path});
  changes.announce();
}

void CleanupQueue::removeFromQueue(FieldChanges& changes,
                                   const std::unordered_set<std::string>& paths) {
  const auto removed =
      std::erase_if(queue_, [&](const DiskNode& node) { return paths.contains(node.path()); });
  if (removed != 0) changes.note(this, &CleanupQueue::queueChanged);
  if (queue_.empty()) changes.set(this, queueOpen_, false, &CleanupQueue::queueOpenChanged);
}

void CleanupQueue::clearQueue() {
  FieldChanges changes;
  clearQueue(changes);
  changes.announce();
}

void CleanupQueue::clearQueue(FieldChanges& changes) {
  changes.set(this, queue_, std::vector<DiskNode>(), &CleanupQueue::queueChanged);
  changes.set(this, queueOpen_, false, &CleanupQueue::queueOpenChanged);
}

}  // namespace tessaly
