#include "app/window/FailureState.h"

#include "app/model/DisplayText.h"

namespace tessaly {

void FailureState::setSession(ScanSession* session) {
  if (session == session_) return;
  if (session_ != nullptr) session_->disconnect(this);
  session_ = session;
  if (session_ != nullptr) {
    connect(session_, &ScanSession::failureChanged, this, &FailureState::changed);
  }
  emit sessionChanged();
  emit changed();
}

bool FailureState::isShown() const {
  return session_ != nullptr && !session_->failures().empty();
}

QString FailureState::text() const {
  return isShown() ? displayText(session_->failures().back()) : QString();
}

QString FailureState::earlier() const {
  const std::size_t count = session_ != nullptr ? session_->failures().size() : 0;
  return count > 1 ? QStringLiteral("%1 earlier").arg(count - 1) : QString();
}

}  // namespace tessaly
