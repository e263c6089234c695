#include "app/sidebar/SidebarState.h"

#include <string>

#include <QPointer>

#include "app/model/DisplayText.h"
#include "look/Wording.h"
#include "scan/Format.h"
#include "scan/Percent.h"

namespace tessaly {

SidebarState::SidebarState(ScanSession& session, AccessController& access, QObject* parent)
    : QObject(parent),
      session_(session),
      access_(access),
      pins_(session.choices(), PathListModel::Pins, session.homeDirectory()),
      recents_(session.choices(), PathListModel::Recents, session.homeDirectory()),
      excludes_(session.choices(), PathListModel::Excludes, session.homeDirectory()),
      filters_(session.choices()),
      volumes_(session.machine()) {
  connect(&session_.navigation(), &Navigation::stackChanged, this,
          &SidebarState::volumeNameChanged);
  connect(&session_.machine(), &MachineState::volumesChanged, this,
          &SidebarState::volumeNameChanged);
  connect(&session_.machine(), &MachineState::diskChanged, this, &SidebarState::diskChanged);
  connect(&session_.run(), &ScanRun::statusChanged, this, &SidebarState::scanningChanged);
  connect(&session_.run(), &ScanRun::scanPercentChanged, this, &SidebarState::percentTextChanged);
  connect(&session_.shown(), &Shown::paneChanged, this, &SidebarState::paneChanged);
  connect(&session_.navigation(), &Navigation::stackChanged, this, &SidebarState::mapBadgeChanged);
  connect(&session_.machine(), &MachineState::trashCountChanged, this,
          &SidebarState::trashBadgeChanged);
}

const DiskUsage& SidebarState::disk() const {
  return session_.machine().disk();
}

QString SidebarState::volumeName() const {
  return displayText(session_.machine().currentVolumeName(session_.navigation().current()));
}

QString SidebarState::totalText() const {
  return QString::fromStdString(Format::bytes(disk().total)) +
         displayText(Wording::current().fileSystemAfterSize(disk().fileSystem));
}

bool SidebarState::isScanning() const {
  return session_.run().status() == ScanStatus::scanning;
}

QString SidebarState::percentText() const {
  return QString::fromStdString(Percent::cut(session_.run().scanPercent() * 100));
}

bool SidebarState::shows(MainPane pane) const {
  return session_.shown().pane() == pane;
}

void SidebarState::setPane(MainPane pane) {
  session_.shown().setPane(pane);
}

QString SidebarState::mapBadge() const {
  const auto current = session_.navigation().current();
  return current ? QString::fromStdString(Format::bytes(current->size())) : QString();
}

QString SidebarState::trashBadge() const {
  const std::int64_t count = session_.machine().trashCount();
  return count >= 1 ? QString::number(count) : QString();
}

void SidebarState::scanPath(const PathHandle& path) {
  if (!path.isValid()) return;
  if (path.path() == "/") {
    scanFullMac();
  } else {
    session_.scan(path.path());
  }
}

void SidebarState::scanFullMac() {
  access_.refresh();
  if (access_.isGranted()) {
    session_.scan("/");
  } else {
    access_.setShowGate(true);
  }
}

void SidebarState::showMap() {
  setPane(MainPane::map);
}

void SidebarState::showMonitor() {
  setPane(MainPane::monitor);
}

void SidebarState::showApps() {
  setPane(MainPane::apps);
}

void SidebarState::emptyTrash() {
  if (session_.machine().trashCount() <= 0 || emptying_ || session_.removal().isMoving()) return;
  setEmptying(true);
  session_.emptyTrash([state = QPointer(this)] {
    if (state) state->setEmptying(false);
  });
}

void SidebarState::setEmptying(bool emptying) {
  if (emptying == emptying_) return;
  emptying_ = emptying;
  emit emptyingChanged();
}

void SidebarState::togglePin(const PathHandle& path) {
  if (path.isValid()) session_.choices().togglePin(path.path());
}

void SidebarState::removeExclude(const PathHandle& path) {
  if (path.isValid()) session_.choices().removeExclude(path.path());
}

void SidebarState::toggleFilter(const QString& filterId) {
  session_.choices().toggleFilter(filterId.toStdString());
}

void SidebarState::toggleSkip(const QString& filterId) {
  session_.choices().toggleSkip(filterId.toStdString());
}

}  // namespace tessaly
