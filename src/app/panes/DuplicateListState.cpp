#include "app/panes/DuplicateListState.h"

#include "app/panes/ComparingText.h"

namespace tessaly {

DuplicateListState::DuplicateListState(ScanSession& session, QObject* parent)
    : QObject(parent), session_(session), rows_(session.findings(), session.cleanupQueue()) {
  connect(&rows_, &DuplicateListModel::countChanged, this, &DuplicateListState::hasRowsChanged);
  connect(&session_.findings(), &Findings::duplicateProgressChanged, this,
          &DuplicateListState::progressChanged);
}

QString DuplicateListState::progress() const {
  const auto& progress = session_.findings().duplicateProgress();
  return progress ? ComparingText::of(*progress) : QString();
}

void DuplicateListState::showOnMap(const NodeHandle& node) {
  if (node.isValid()) session_.focusPath(node.node()->path());
}

void DuplicateListState::addToQueue(const NodeHandle& node) {
  if (node.isValid()) session_.cleanupQueue().addToQueue(*node.node());
}

}  // namespace tessaly
