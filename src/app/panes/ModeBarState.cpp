#include "app/panes/ModeBarState.h"

namespace tessaly {

ModeBarState::ModeBarState(ScanSession& session, QObject* parent)
    : QObject(parent), session_(session) {
  connect(&session_.navigation(), &Navigation::stackChanged, this, &ModeBarState::canWatchChanged);
  connect(&session_.selection(), &Selection::selectionChanged, this,
          &ModeBarState::selectionChanged);
  connect(&session_.removal(), &Removal::lastTrashedChanged, this,
          &ModeBarState::lastTrashedChanged);
}

bool ModeBarState::canWatch() const {
  return !session_.navigation().stack().empty();
}

int ModeBarState::selectedCount() const {
  return static_cast<int>(session_.selection().selected().size());
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
