#include "app/panes/HistoryListState.h"

#include "app/panes/HistoryTexts.h"

namespace tessaly {

HistoryListState::HistoryListState(ScanSession& session, QObject* parent)
    : QObject(parent), session_(session), rows_(session.result()) {
  connect(&session_.result(), &ScanResult::historyChanged, this, &HistoryListState::pointsChanged);
}

QString HistoryListState::summary() const {
  return HistoryTexts::summary(points());
}

}  // namespace tessaly
