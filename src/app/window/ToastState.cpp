#include "app/window/ToastState.h"

#include "app/model/DisplayText.h"

namespace tessaly {

void ToastState::setSession(ScanSession* session) {
  if (session == session_) return;
  if (session_ != nullptr) session_->disconnect(this);
  session_ = session;
  if (session_ != nullptr) {
    connect(session_, &ScanSession::toastChanged, this, &ToastState::take);
  }
  emit sessionChanged();
  take();
}

void ToastState::take() {
  shown_ = session_ != nullptr && session_->toast().has_value();
  if (shown_) text_ = displayText(*session_->toast());
  emit changed();
}

}  // namespace tessaly
