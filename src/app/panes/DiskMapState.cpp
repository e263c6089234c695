#include "app/panes/DiskMapState.h"

#include <array>
#include <charconv>

#include "app/model/DisplayText.h"
#include "app/panes/ModeListModel.h"
#include "app/panes/UnreadableText.h"
#include "scan/Format.h"
#include "scan/Percent.h"
#include "scan/ShownName.h"

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

DiskMapState::DiskMapState(ScanSession& session, QObject* parent)
    : QObject(parent), session_(session), bar_(session), modes_(session.shown()), canvas_(session) {
  connect(&session_.navigation(), &Navigation::stackChanged, this, &DiskMapState::takeCurrent);
  connect(&session_.run(), &ScanRun::statusChanged, this, &DiskMapState::screenChanged);
  connect(&session_.run(), &ScanRun::statusChanged, this, &DiskMapState::statsTextChanged);
  connect(&session_.shown(), &Shown::vizModeChanged, this, &DiskMapState::screenChanged);
  connect(&session_.result(), &ScanResult::scanStatsChanged, this, &DiskMapState::statsTextChanged);
  connect(&session_.result(), &ScanResult::unreadableChanged, this,
          &DiskMapState::statsTextChanged);
  connect(&session_.run(), &ScanRun::progressChanged, this, &DiskMapState::progressChanged);
  connect(&session_.run(), &ScanRun::errorMessageChanged, this, &DiskMapState::errorTextChanged);
  connect(&session_.run(), &ScanRun::scanPercentChanged, this, &DiskMapState::percentTextChanged);
  takeCurrent();
}

void DiskMapState::takeCurrent() {
  node_ = session_.navigation().current();
  std::string place = node_ ? node_->path() : std::string();
  const bool moved = place != place_;
  place_ = std::move(place);
  emit nodeChanged();
  if (moved) emit placeChanged();
  emit screenChanged();
}

DiskMapState::Screen DiskMapState::screen() const {
  return screenFor(session_.run().status(), node_.has_value());
}

bool DiskMapState::isRescanning() const {
  return screen() == Result && session_.run().status() == ScanStatus::scanning;
}

bool DiskMapState::showsTreemap() const {
  return node_.has_value() && session_.shown().vizMode() == VizMode::treemap;
}

QString DiskMapState::modeKey() const {
  return ModeListModel::keyOf(session_.shown().vizMode());
}

QString DiskMapState::nodeName() const {
  return node_ ? displayText(shownName(*node_)) : QString();
}

QString DiskMapState::sizeText() const {
  return node_ ? QString::fromStdString(Format::bytes(node_->size())) : QString();
}

QString DiskMapState::itemsText() const {
  return node_ ? QStringLiteral("(%1 items)").arg(node_->children().size()) : QString();
}

bool DiskMapState::hasFigures() const {
  return session_.run().status() == ScanStatus::complete &&
         session_.result().scanStats().has_value();
}

QString DiskMapState::statsText() const {
  if (!hasFigures()) return {};
  const auto& stats = session_.result().scanStats();
  return QStringLiteral("%1 files · %2 folders · %3")
      .arg(QString::number(stats->files), QString::number(stats->folders),
           seconds(stats->duration));
}

QString DiskMapState::unreadableText() const {
  return hasFigures() ? UnreadableText::figure(session_.result().unreadable()) : QString();
}

QString DiskMapState::unreadableList() const {
  return hasFigures() ? UnreadableText::list(session_.result().unreadable()) : QString();
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
  return displayText(session_.run().errorMessage());
}

QString DiskMapState::progressText() const {
  return displayText(session_.run().progress());
}

QString DiskMapState::percentText() const {
  return QString::fromStdString(Percent::cut(session_.run().scanPercent() * 100));
}

void DiskMapState::open(const NodeHandle& node) {
  if (node.isValid()) session_.open(*node.node());
}

void DiskMapState::showTreemap() {
  session_.shown().setVizMode(VizMode::treemap);
}

AliasListState* DiskMapState::aliasList(QObject* view) const {
  return new AliasListState(session_, view);
}

CloneListState* DiskMapState::cloneList(QObject* view) const {
  return new CloneListState(session_, view);
}

CloudListState* DiskMapState::cloudList(QObject* view) const {
  return new CloudListState(session_, view);
}

CompareListState* DiskMapState::compareList(QObject* view) const {
  return new CompareListState(session_, view);
}

DuplicateListState* DiskMapState::duplicateList(QObject* view) const {
  return new DuplicateListState(session_, view);
}

GrewListState* DiskMapState::grewList(QObject* view) const {
  return new GrewListState(session_, view);
}

HistoryListState* DiskMapState::historyList(QObject* view) const {
  return new HistoryListState(session_, view);
}

LargestListState* DiskMapState::largestList(QObject* view) const {
  return new LargestListState(session_, view);
}

SafeListState* DiskMapState::safeList(QObject* view) const {
  return new SafeListState(session_, view);
}

ListWinsState* DiskMapState::winsList(QObject* view) const {
  return new ListWinsState(session_, view);
}

void DiskMapState::askAbout(const NodeHandle& node) {
  if (node.isValid()) session_.shown().setMenuNode(node.node());
}

}  // namespace tessaly
