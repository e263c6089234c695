#include "app/sidebar/SidebarState.h"

#include <string>

#include "app/model/DisplayText.h"
#include "scan/Format.h"

namespace tessaly {

void SidebarState::setSession(ScanSession* session) {
  if (session == session_) return;
  if (session_ != nullptr) session_->disconnect(this);
  session_ = session;
  if (session_ != nullptr) {
    connect(session_, &ScanSession::stackChanged, this, &SidebarState::volumeNameChanged);
    connect(session_, &ScanSession::volumesChanged, this, &SidebarState::volumeNameChanged);
    connect(session_, &ScanSession::diskChanged, this, &SidebarState::diskChanged);
    connect(session_, &ScanSession::statusChanged, this, &SidebarState::scanningChanged);
    connect(session_, &ScanSession::scanPercentChanged, this, &SidebarState::percentTextChanged);
    connect(session_, &ScanSession::paneChanged, this, &SidebarState::paneChanged);
    connect(session_, &ScanSession::stackChanged, this, &SidebarState::mapBadgeChanged);
    connect(session_, &ScanSession::trashCountChanged, this, &SidebarState::trashBadgeChanged);
  }
  emit sessionChanged();
  emit volumeNameChanged();
  emit diskChanged();
  emit scanningChanged();
  emit percentTextChanged();
  emit paneChanged();
  emit mapBadgeChanged();
  emit trashBadgeChanged();
}

void SidebarState::setAccess(AccessController* access) {
  if (access == access_) return;
  access_ = access;
  emit accessChanged();
}

const DiskUsage& SidebarState::disk() const {
  static const DiskUsage unknown;
  return session_ != nullptr ? session_->disk() : unknown;
}

QString SidebarState::volumeName() const {
  return session_ != nullptr ? displayText(session_->currentVolumeName()) : QString();
}

QString SidebarState::totalText() const {
  return QString::fromStdString(Format::bytes(disk().total)) + QStringLiteral(" APFS");
}

bool SidebarState::isScanning() const {
  return session_ != nullptr && session_->status() == ScanStatus::scanning;
}

QString SidebarState::percentText() const {
  const double percent = session_ != nullptr ? session_->scanPercent() * 100 : 0;
  return QString::number(static_cast<int>(percent)) + QLatin1Char('%');
}

bool SidebarState::shows(MainPane pane) const {
  return session_ != nullptr && session_->pane() == pane;
}

void SidebarState::setPane(MainPane pane) {
  if (session_ != nullptr) session_->setPane(pane);
}

QString SidebarState::mapBadge() const {
  const auto current = session_ != nullptr ? session_->current() : std::nullopt;
  return current ? QString::fromStdString(Format::bytes(current->size())) : QString();
}

QString SidebarState::trashBadge() const {
  const std::int64_t count = session_ != nullptr ? session_->trashCount() : 0;
  return count >= 1 ? QString::number(count) : QString();
}

void SidebarState::scanPath(const PathHandle& path) {
  if (session_ == nullptr || !path.isValid()) return;
  if (path.path() == "/") {
    scanFullMac();
  } else {
    session_->scan(path.path());
  }
}

void SidebarState::scanFullMac() {
  if (session_ == nullptr || access_ == nullptr) return;
  access_->refresh();
  if (access_->isGranted()) {
    session_->scan("/");
  } else {
    access_->setShowGate(true);
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
  if (session_ == nullptr || session_->trashCount() <= 0 || emptying_) return;
  setEmptying(true);
  session_->emptyTrash([state = QPointer(this)] {
    if (state) state->setEmptying(false);
  });
}

void SidebarState::setEmptying(bool emptying) {
  if (emptying == emptying_) return;
  emptying_ = emptying;
  emit emptyingChanged();
}

void SidebarState::togglePin(const PathHandle& path) {
  if (session_ != nullptr && path.isValid()) session_->togglePin(path.path());
}

void SidebarState::removeExclude(const PathHandle& path) {
  if (session_ != nullptr && path.isValid()) session_->removeExclude(path.path());
}

void SidebarState::toggleFilter(const QString& filterId) {
  if (session_ != nullptr) session_->toggleFilter(filterId.toStdString());
}

void SidebarState::toggleSkip(const QString& filterId) {
  if (session_ != nullptr) session_->toggleSkip(filterId.toStdString());
}

}  // namespace tessaly
