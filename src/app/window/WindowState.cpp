#include "app/window/WindowState.h"

namespace tessaly {

void WindowState::setSession(ScanSession* session) {
  if (session == session_) return;
  if (session_ != nullptr) session_->disconnect(this);
  session_ = session;
  if (session_ != nullptr) {
    connect(session_, &ScanSession::stackChanged, this, &WindowState::changed);
    connect(session_, &ScanSession::paneChanged, this, &WindowState::changed);
  }
  emit sessionChanged();
  emit changed();
}

bool WindowState::showsBackButton() const {
  return session_ != nullptr && session_->stack().size() > 1;
}

bool WindowState::showsBreadcrumbs() const {
  return showsBackButton() && session_->pane() == MainPane::map;
}

}  // namespace tessaly
