#include "app/panes/ModeBarState.h"

namespace tessaly {

void ModeBarState::setSession(ScanSession* session) {
  if (session == session_) return;
  if (session_ != nullptr) session_->disconnect(this);
  session_ = session;
  if (session_ != nullptr) {
    connect(session_, &ScanSession::vizModeChanged, this, &ModeBarState::modeChanged);
    connect(session_, &ScanSession::selectionChanged, this, &ModeBarState::selectionChanged);
    connect(session_, &ScanSession::lastTrashedChanged, this, &ModeBarState::lastTrashedChanged);
  }
  emit sessionChanged();
  emit modeChanged();
  emit selectionChanged();
  emit lastTrashedChanged();
}

bool ModeBarState::showsTreemap() const {
  return session_ != nullptr && session_->vizMode() == VizMode::treemap;
}

int ModeBarState::selectedCount() const {
  return session_ != nullptr ? static_cast<int>(session_->selected().size()) : 0;
}

bool ModeBarState::canPutBack() const {
  return session_ != nullptr && !session_->lastTrashed().empty();
}

void ModeBarState::showTreemap() {
  if (session_ != nullptr) session_->setVizMode(VizMode::treemap);
}

}  // namespace tessaly
