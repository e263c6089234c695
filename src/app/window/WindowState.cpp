#include "app/window/WindowState.h"

#include "app/model/DisplayText.h"
#include "scan/Remainder.h"

namespace tessaly {

static_assert(static_cast<int>(MainPane::map) == WindowState::Map);
static_assert(static_cast<int>(MainPane::apps) == WindowState::Apps);
static_assert(static_cast<int>(MainPane::monitor) == WindowState::Monitor);

WindowState::WindowState(ScanSession& session, QObject* parent)
    : QObject(parent), session_(session) {
  connect(&session_.navigation(), &Navigation::stackChanged, this, &WindowState::changed);
  connect(&session_.shown(), &Shown::paneChanged, this, &WindowState::changed);
  connect(&session_.shown(), &Shown::vizModeChanged, this, &WindowState::changed);
  connect(&session_.machine(), &MachineState::volumesChanged, this, &WindowState::changed);
  connect(&session_.cleanupQueue(), &CleanupQueue::queueOpenChanged, this, &WindowState::changed);
  connect(&session_.cleanupQueue(), &CleanupQueue::queueMinimizedChanged, this,
          &WindowState::changed);
  connect(&session_.selection(), &Selection::focusedChanged, this, &WindowState::focusedChanged);
}

WindowState::Pane WindowState::pane() const {
  return static_cast<Pane>(session_.shown().pane());
}

void WindowState::setPane(Pane pane) {
  session_.shown().setPane(static_cast<MainPane>(pane));
}

bool WindowState::showsTreemap() const {
  return session_.shown().vizMode() == VizMode::treemap;
}

void WindowState::showTreemap() {
  session_.shown().setVizMode(VizMode::treemap);
}

bool WindowState::showsBackButton() const {
  return session_.navigation().stack().size() > 1;
}

bool WindowState::showsBreadcrumbs() const {
  return showsBackButton() && session_.shown().pane() == MainPane::map;
}

QString WindowState::volumeName() const {
  return displayText(session_.machine().currentVolumeName(session_.navigation().current()));
}

bool WindowState::isQueueUnfolded() const {
  return session_.cleanupQueue().queueOpen() && !session_.cleanupQueue().queueMinimized();
}

void WindowState::putQueueAway() {
  if (session_.cleanupQueue().queue().empty()) {
    session_.cleanupQueue().setQueueOpen(false);
  } else {
    session_.cleanupQueue().setQueueMinimized(true);
  }
}

void WindowState::setSettingsOpen(bool open) {
  if (open == settingsOpen_) return;
  settingsOpen_ = open;
  emit settingsOpenChanged();
}

bool WindowState::hasFocusedNode() const {
  return session_.selection().focused() && !isRemainder(*session_.selection().focused());
}

NodeHandle WindowState::focusedNode() const {
  return NodeHandle(session_.selection().focused());
}

}  // namespace tessaly
