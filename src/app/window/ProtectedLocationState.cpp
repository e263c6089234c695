#include "app/window/ProtectedLocationState.h"

#include "app/model/DisplayText.h"
#include "reclaim/CriticalPaths.h"

namespace tessaly {

void ProtectedLocationState::setSession(ScanSession* session) {
  if (session == session_) return;
  if (session_ != nullptr) session_->disconnect(this);
  session_ = session;
  if (session_ != nullptr) {
    connect(session_, &ScanSession::criticalWarningChanged, this, &ProtectedLocationState::changed);
  }
  emit sessionChanged();
  emit changed();
}

bool ProtectedLocationState::isShown() const {
  return session_ != nullptr && session_->criticalWarning().has_value();
}

QString ProtectedLocationState::message() const {
  if (!isShown()) return {};
  const std::string path = session_->criticalWarning()->path();
  return displayText(CriticalPaths::reason(path, session_->homeDirectory())) +
         QStringLiteral("\n\n") + displayText(path);
}

}  // namespace tessaly
