#include "app/queue/CleanupQueueState.h"

#include <cstddef>
#include <cstdint>

#include "platform/CheckedArithmetic.h"
#include "scan/Format.h"

namespace tessaly {

CleanupQueueState::CleanupQueueState(ScanSession& session, QObject* parent)
    : QObject(parent), session_(session) {
  using State = CleanupQueueState;
  connect(&session_.cleanupQueue(), &CleanupQueue::queueChanged, this, &State::followQueue);
  connect(&session_.cleanupQueue(), &CleanupQueue::queueOpenChanged, this, &State::lookChanged);
  connect(&session_.cleanupQueue(), &CleanupQueue::queueMinimizedChanged, this,
          &State::lookChanged);
  connect(&session_.cleanupQueue(), &CleanupQueue::queueMinimizedChanged, this,
          &State::headerNameChanged);
  connect(&session_.cleanupQueue(), &CleanupQueue::queueChanged, this, &State::queueChanged);
  connect(&session_.cleanupQueue(), &CleanupQueue::queueChanged, this, &State::headerNameChanged);
  connect(&session_.removal(), &Removal::movingChanged, this, &State::canTrashChanged);
  followQueue();
}

void CleanupQueueState::followQueue() {
  rows_.set(session_.cleanupQueue().queue());
}

CleanupQueueState::Look CleanupQueueState::look() const {
  if (!session_.cleanupQueue().queueOpen()) return Hidden;
  return session_.cleanupQueue().queueMinimized() ? Minimized : Open;
}

QString CleanupQueueState::countText() const {
  return QString::number(session_.cleanupQueue().queue().size());
}

QString CleanupQueueState::headerName() const {
  const std::size_t count = session_.cleanupQueue().queue().size();
  const bool isMinimized = session_.cleanupQueue().queueMinimized();
  return QStringLiteral("Cleanup Queue, %1, %2")
      .arg(QString::fromStdString(Format::counted(count, "item")),
           isMinimized ? QStringLiteral("minimised") : QStringLiteral("expanded"));
}

QString CleanupQueueState::moveText() const {
  std::int64_t sum = 0;
  for (const DiskNode& node : session_.cleanupQueue().queue()) sum = checkedAdd(sum, node.size());
  return QStringLiteral("Move %1 to Trash · %2")
      .arg(countText(), QString::fromStdString(Format::bytes(sum)));
}

void CleanupQueueState::toggleMinimized() {
  session_.cleanupQueue().setQueueMinimized(!session_.cleanupQueue().queueMinimized());
}

void CleanupQueueState::remove(const NodeHandle& node) {
  if (node.isValid()) session_.cleanupQueue().removeFromQueue(node.node()->path());
}

void CleanupQueueState::clear() {
  session_.cleanupQueue().clearQueue();
}

void CleanupQueueState::zipThenTrash() {
  session_.zipThenTrash(session_.cleanupQueue().queue());
}

void CleanupQueueState::moveToTrash() {
  session_.emptyQueue();
}

}  // namespace tessaly
