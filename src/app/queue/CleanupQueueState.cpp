#include "app/queue/CleanupQueueState.h"

#include <cstddef>
#include <cstdint>

#include "platform/CheckedArithmetic.h"
#include "scan/Format.h"

namespace tessaly {

void CleanupQueueState::setSession(ScanSession* session) {
  if (session == session_) return;
  if (session_ != nullptr) session_->disconnect(this);
  session_ = session;
  if (session_ != nullptr) {
    using State = CleanupQueueState;
    connect(session_, &ScanSession::queueOpenChanged, this, &State::lookChanged);
    connect(session_, &ScanSession::queueMinimizedChanged, this, &State::lookChanged);
    connect(session_, &ScanSession::queueMinimizedChanged, this, &State::headerNameChanged);
    connect(session_, &ScanSession::queueChanged, this, &State::queueChanged);
    connect(session_, &ScanSession::queueChanged, this, &State::headerNameChanged);
  }
  emit sessionChanged();
  emit lookChanged();
  emit queueChanged();
  emit headerNameChanged();
}

CleanupQueueState::Look CleanupQueueState::look() const {
  if (session_ == nullptr || !session_->queueOpen()) return Hidden;
  return session_->queueMinimized() ? Minimized : Open;
}

QString CleanupQueueState::countText() const {
  return QString::number(session_ != nullptr ? session_->queue().size() : 0);
}

QString CleanupQueueState::headerName() const {
  const std::size_t count = session_ != nullptr ? session_->queue().size() : 0;
  const bool isMinimized = session_ != nullptr && session_->queueMinimized();
  return QStringLiteral("Cleanup Queue, %1, %2")
      .arg(QString::fromStdString(Format::counted(count, "item")),
           isMinimized ? QStringLiteral("minimised") : QStringLiteral("expanded"));
}

QString CleanupQueueState::moveText() const {
  std::int64_t sum = 0;
  if (session_ != nullptr) {
    for (const DiskNode& node : session_->queue()) sum = checkedAdd(sum, node.size());
  }
  return QStringLiteral("Move %1 to Trash · %2")
      .arg(countText(), QString::fromStdString(Format::bytes(sum)));
}

void CleanupQueueState::toggleMinimized() {
  if (session_ != nullptr) session_->setQueueMinimized(!session_->queueMinimized());
}

void CleanupQueueState::remove(const NodeHandle& node) {
  if (session_ != nullptr && node.isValid()) session_->removeFromQueue(node.node()->path());
}

void CleanupQueueState::clear() {
  if (session_ != nullptr) session_->clearQueue();
}

void CleanupQueueState::zipThenTrash() {
  if (session_ != nullptr) session_->zipThenTrash(session_->queue());
}

void CleanupQueueState::moveToTrash() {
  if (session_ != nullptr) session_->emptyQueue();
}

}  // namespace tessaly
