#include "app/panes/ModeBarState.h"

namespace tessaly {

void ModeBarState::setSession(ScanSession* session) {
  if (session == session_) return;
  if (session_ != nullptr) session_->disconnect(this);
  session_ = session;
  if (session_ != nullptr) {
    connect(session_, &ScanSession::stackChanged, this, &ModeBarState::canWatchChanged);
    connect(session_, &ScanSession::selectionChanged, this, &ModeBarState::selectionChanged);
    connect(session_, &ScanSession::lastTrashedChanged, this, &ModeBarState::lastTrashedChanged);
  }
  emit sessionChanged();
  emit canWatchChanged();
  emit selectionChanged();
  emit lastTrashedChanged();
}

bool ModeBarState::canWatch() const {
  return session_ != nullptr && !session_->stack().empty();
}

int ModeBarState::selectedCount() const {
  return session_ != nullptr ? static_cast<int>(session_->selected().size()) : 0;
}

bool ModeBarState::canPutBack() const {
  return session_ != nullptr && !session_->lastTrashed().empty();
}

void ModeBarState::toggleWatch() {
  if (session_ == nullptr) return;
  if (session_->watching()) {
    session_->stopWatch();
  } else {
    session_->startWatch();
  }
}

void ModeBarState::zipSelected() {
  if (session_ != nullptr) session_->zipThenTrash(session_->selectedNodes());
}

}  // namespace tessaly
