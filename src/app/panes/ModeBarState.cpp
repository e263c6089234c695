#include "app/panes/ModeBarState.h"

namespace tessaly {

ModeBarState::ModeBarState(ScanSession& session, QObject* parent)
    : QObject(parent), session_(session) {
  connect(&session_.navigation(), &Navigation::stackChanged, this, &ModeBarState::canWatchChanged);
  connect(&session_.selection(), &Selection::selectionChanged, this,
          &ModeBarState::selectionChanged);
  connect(&session_.removal(), &Removal::lastTrashedChanged, this,
          &ModeBarState::lastTrashedChanged);
  connect(&session_.watch(), &LiveWatch::watchingChanged, this, &ModeBarState::watchTextChanged);
  connect(&session_.shown(), &Shown::heatmapChanged, this, &ModeBarState::heatmapTextChanged);
  // These signals show and hide the actions.
  connect(this, &ModeBarState::selectionChanged, this, &ModeBarState::countActions);
  connect(this, &ModeBarState::lastTrashedChanged, this, &ModeBarState::countActions);
  countActions();
}

void ModeBarState::countActions() {
  constexpr int forSelection = 3;
  const int before = actions_;
  actions_ = (hasSelection() ? forSelection : 0) + (canPutBack() ? 1 : 0);
  if (actions_ > before) emit actionsAdded();
}

bool ModeBarState::canWatch() const {
  return !session_.navigation().stack().empty();
}

QString ModeBarState::watchText() const {
  return session_.watch().watching() ? QStringLiteral("Watching") : QStringLiteral("Watch");
}

QString ModeBarState::heatmapText() const {
  return session_.shown().heatmap() ? QStringLiteral("Age Heatmap") : QStringLiteral("Age");
}

std::size_t ModeBarState::selectedCount() const {
  return session_.selection().selected().size();
}

QString ModeBarState::queueText() const {
  return QStringLiteral("Queue (%1)").arg(selectedCount());
}

QString ModeBarState::zipText() const {
  return QStringLiteral("Zip (%1)").arg(selectedCount());
}

bool ModeBarState::canPutBack() const {
  return !session_.removal().lastTrashed().empty();
}

void ModeBarState::toggleWatch() {
  if (session_.watch().watching()) {
    session_.watch().stopWatch();
  } else {
    session_.startWatch();
  }
}

void ModeBarState::zipSelected() {
  session_.zipThenTrash(session_.selection().selectedNodes());
}

}  // namespace tessaly
