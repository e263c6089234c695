#include "app/window/WindowState.h"

#include "app/model/DisplayText.h"
#include "scan/Remainder.h"

namespace tessaly {

static_assert(static_cast<int>(MainPane::map) == WindowState::Map);
static_assert(static_cast<int>(MainPane::apps) == WindowState::Apps);
static_assert(static_cast<int>(MainPane::monitor) == WindowState::Monitor);

WindowState::WindowState(ScanSession& session, const AccessController& access,
                         const CommandTarget& target, QObject* parent)
    : QObject(parent), session_(session), access_(access), target_(target) {
  connect(&session_.navigation(), &Navigation::stackChanged, this, &WindowState::changed);
  connect(&session_.shown(), &Shown::paneChanged, this, &WindowState::changed);
  connect(&session_.shown(), &Shown::vizModeChanged, this, &WindowState::changed);
  connect(&session_.machine(), &MachineState::volumesChanged, this, &WindowState::changed);
  connect(&session_.cleanupQueue(), &CleanupQueue::queueOpenChanged, this, &WindowState::changed);
  connect(&session_.cleanupQueue(), &CleanupQueue::queueMinimizedChanged, this,
          &WindowState::changed);
  connect(&target_, &CommandTarget::changed, this, &WindowState::targetChanged);
  connect(&session_.shown(), &Shown::searchOpenChanged, this, &WindowState::layersChanged);
  connect(&session_.shown(), &Shown::aiOpenChanged, this, &WindowState::layersChanged);
  connect(&session_.shown(), &Shown::ocrOpenChanged, this, &WindowState::layersChanged);
  connect(&session_.shown(), &Shown::menuNodeChanged, this, &WindowState::layersChanged);
  connect(&session_.removal(), &Removal::criticalWarningChanged, this, &WindowState::layersChanged);
  connect(&access_, &AccessController::showGateChanged, this, &WindowState::layersChanged);
  for (const auto signal :
       {&WindowState::changed, &WindowState::targetChanged, &WindowState::settingsOpenChanged})
    connect(this, signal, this, &WindowState::layersChanged);
}

WindowState::Pane WindowState::pane() const {
  return static_cast<Pane>(session_.shown().pane());
}

void WindowState::setPane(Pane pane) {
  session_.shown().setPane(static_cast<MainPane>(pane));
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

// Collapses the queue's panel, or hides it if the queue is empty.
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

void WindowState::setMenuOpen(bool open) {
  if (open == menuOpen_) return;
  menuOpen_ = open;
  emit layersChanged();
}

bool WindowState::isCovered() const {
  const Shown& shown = session_.shown();
  return access_.showGate() || settingsOpen_ || shown.aiOpen() || shown.ocrOpen() ||
         shown.menuNode().has_value() || session_.removal().criticalWarning().has_value();
}

bool WindowState::isClear() const {
  return !isCovered() && !session_.shown().searchOpen();
}

bool WindowState::takesCommands() const {
  return isClear() && !menuOpen_;
}

bool WindowState::canPreview() const {
  return takesCommands() && pane() == Map && target().isValid() && !isRemainder(*target().node());
}

WindowState::Escape WindowState::escape() const {
  if (isCovered() || menuOpen_) return Escape::nothing;
  if (session_.shown().searchOpen()) return Escape::search;
  if (isQueueUnfolded()) return Escape::queue;
  if (pane() != Map) return Escape::pane;
  if (session_.shown().vizMode() != VizMode::treemap) return Escape::list;
  return Escape::nothing;
}

void WindowState::putAway() {
  switch (escape()) {
    case Escape::search:
      session_.shown().setSearchOpen(false);
      break;
    case Escape::queue:
      putQueueAway();
      break;
    case Escape::pane:
      setPane(Map);
      break;
    case Escape::list:
      session_.shown().setVizMode(VizMode::treemap);
      break;
    case Escape::nothing:
      break;
  }
}

NodeHandle WindowState::target() const {
  return target_.node();
}

}  // namespace tessaly
