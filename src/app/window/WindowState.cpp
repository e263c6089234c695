#include "app/window/WindowState.h"

#include "app/model/DisplayText.h"
#include "scan/Remainder.h"

namespace tessaly {

static_assert(static_cast<int>(MainPane::map) == WindowState::Map);
static_assert(static_cast<int>(MainPane::apps) == WindowState::Apps);
static_assert(static_cast<int>(MainPane::monitor) == WindowState::Monitor);

void WindowState::setSession(ScanSession* session) {
  if (session == session_) return;
  if (session_ != nullptr) session_->disconnect(this);
  session_ = session;
  if (session_ != nullptr) {
    connect(session_, &ScanSession::stackChanged, this, &WindowState::changed);
    connect(session_, &ScanSession::paneChanged, this, &WindowState::changed);
    connect(session_, &ScanSession::vizModeChanged, this, &WindowState::changed);
    connect(session_, &ScanSession::volumesChanged, this, &WindowState::changed);
    connect(session_, &ScanSession::queueOpenChanged, this, &WindowState::changed);
    connect(session_, &ScanSession::queueMinimizedChanged, this, &WindowState::changed);
    connect(session_, &ScanSession::focusedChanged, this, &WindowState::focusedChanged);
  }
  emit sessionChanged();
  emit changed();
  emit focusedChanged();
}

WindowState::Pane WindowState::pane() const {
  return session_ != nullptr ? static_cast<Pane>(session_->pane()) : Map;
}

void WindowState::setPane(Pane pane) {
  if (session_ != nullptr) session_->setPane(static_cast<MainPane>(pane));
}

bool WindowState::showsTreemap() const {
  return session_ == nullptr || session_->vizMode() == VizMode::treemap;
}

void WindowState::showTreemap() {
  if (session_ != nullptr) session_->setVizMode(VizMode::treemap);
}

bool WindowState::showsBackButton() const {
  return session_ != nullptr && session_->stack().size() > 1;
}

bool WindowState::showsBreadcrumbs() const {
  return showsBackButton() && session_->pane() == MainPane::map;
}

QString WindowState::volumeName() const {
  return session_ != nullptr ? displayText(session_->currentVolumeName()) : QString();
}

bool WindowState::isQueueUnfolded() const {
  return session_ != nullptr && session_->queueOpen() && !session_->queueMinimized();
}

void WindowState::putQueueAway() {
  if (session_ == nullptr) return;
  if (session_->queue().empty()) {
    session_->setQueueOpen(false);
  } else {
    session_->setQueueMinimized(true);
  }
}

void WindowState::setSettingsOpen(bool open) {
  if (open == settingsOpen_) return;
  settingsOpen_ = open;
  emit settingsOpenChanged();
}

bool WindowState::hasFocusedNode() const {
  return session_ != nullptr && session_->focused() && !isRemainder(*session_->focused());
}

NodeHandle WindowState::focusedNode() const {
  return session_ != nullptr ? NodeHandle(session_->focused()) : NodeHandle();
}

}  // namespace tessaly
