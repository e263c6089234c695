#include "app/panes/DiskMapState.h"

#include <array>
#include <charconv>

#include "app/model/DisplayText.h"
#include "app/panes/ModeListModel.h"
#include "app/panes/UnreadableText.h"
#include "scan/Format.h"

namespace tessaly {

namespace {

QString seconds(double duration) {
  std::array<char, 400> buffer;
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), duration,
                                    std::chars_format::fixed, 2);
  return QString::fromLatin1(buffer.data(), result.ptr - buffer.data()) + QLatin1Char('s');
}

}  // namespace

DiskMapState::Screen DiskMapState::screenFor(ScanStatus status, bool hasCurrent) {
  switch (status) {
    case ScanStatus::idle:
      return Idle;
    case ScanStatus::scanning:
      return hasCurrent ? Result : Scanning;
    case ScanStatus::complete:
      return hasCurrent ? Result : Idle;
    case ScanStatus::error:
      return Failed;
  }
  return Idle;
}

void DiskMapState::setSession(ScanSession* session) {
  if (session == session_) return;
  if (session_ != nullptr) session_->disconnect(this);
  session_ = session;
  if (session_ != nullptr) {
    connect(session_, &ScanSession::stackChanged, this, &DiskMapState::takeCurrent);
    connect(session_, &ScanSession::statusChanged, this, &DiskMapState::screenChanged);
    connect(session_, &ScanSession::statusChanged, this, &DiskMapState::statsTextChanged);
    connect(session_, &ScanSession::vizModeChanged, this, &DiskMapState::screenChanged);
    connect(session_, &ScanSession::scanStatsChanged, this, &DiskMapState::statsTextChanged);
    connect(session_, &ScanSession::unreadableChanged, this, &DiskMapState::statsTextChanged);
    connect(session_, &ScanSession::progressChanged, this, &DiskMapState::progressChanged);
    connect(session_, &ScanSession::errorMessageChanged, this, &DiskMapState::errorTextChanged);
    connect(session_, &ScanSession::scanPercentChanged, this, &DiskMapState::percentTextChanged);
  }
  emit sessionChanged();
  takeCurrent();
  emit statsTextChanged();
  emit progressChanged();
  emit errorTextChanged();
  emit percentTextChanged();
}

void DiskMapState::takeCurrent() {
  node_ = session_ != nullptr ? session_->current() : std::nullopt;
  std::string place = node_ ? node_->path() : std::string();
  const bool moved = place != place_;
  place_ = std::move(place);
  emit nodeChanged();
  if (moved) emit placeChanged();
  emit screenChanged();
}

DiskMapState::Screen DiskMapState::screen() const {
  return session_ != nullptr ? screenFor(session_->status(), node_.has_value()) : Idle;
}

bool DiskMapState::isRescanning() const {
  return screen() == Result && session_->status() == ScanStatus::scanning;
}

bool DiskMapState::showsTreemap() const {
  return node_.has_value() && session_->vizMode() == VizMode::treemap;
}

QString DiskMapState::modeTitle() const {
  return session_ != nullptr ? ModeListModel::labelOf(session_->vizMode()) : QString();
}

QString DiskMapState::nodeName() const {
  return node_ ? displayText(node_->name()) : QString();
}

QString DiskMapState::sizeText() const {
  return node_ ? QString::fromStdString(Format::bytes(node_->size())) : QString();
}

QString DiskMapState::itemsText() const {
  return node_ ? QStringLiteral("(%1 items)").arg(node_->children().size()) : QString();
}

bool DiskMapState::hasFigures() const {
  return session_ != nullptr && session_->status() == ScanStatus::complete &&
         session_->scanStats().has_value();
}

QString DiskMapState::statsText() const {
  if (!hasFigures()) return {};
  const auto& stats = session_->scanStats();
  return QStringLiteral("%1 files · %2 folders · %3")
      .arg(QString::number(stats->files), QString::number(stats->folders),
           seconds(stats->duration));
}

QString DiskMapState::unreadableText() const {
  return hasFigures() ? UnreadableText::figure(session_->unreadable()) : QString();
}

QString DiskMapState::unreadableList() const {
  return hasFigures() ? UnreadableText::list(session_->unreadable()) : QString();
}

QString DiskMapState::scanningText() const {
  const QString progress = progressText();
  return progress.isEmpty() ? QStringLiteral("Walking directory tree") : progress;
}

QString DiskMapState::bannerText() const {
  const QString progress = progressText();
  return progress.isEmpty() ? QStringLiteral("Scanning…") : progress;
}

QString DiskMapState::errorText() const {
  return session_ != nullptr ? displayText(session_->errorMessage()) : QString();
}

QString DiskMapState::progressText() const {
  return session_ != nullptr ? displayText(session_->progress()) : QString();
}

QString DiskMapState::percentText() const {
  const double percent = session_ != nullptr ? session_->scanPercent() * 100 : 0;
  return QString::number(static_cast<int>(percent)) + QLatin1Char('%');
}

void DiskMapState::open(const NodeHandle& node) {
  if (session_ != nullptr && node.isValid()) session_->open(*node.node());
}

void DiskMapState::showTreemap() {
  if (session_ != nullptr) session_->setVizMode(VizMode::treemap);
}

void DiskMapState::askAbout(const NodeHandle& node) {
  if (session_ != nullptr && node.isValid()) session_->setMenuNode(node.node());
}

}  // namespace tessaly
