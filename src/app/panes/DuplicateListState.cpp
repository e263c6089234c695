#include "app/panes/DuplicateListState.h"

namespace tessaly {

DuplicateListState::DuplicateListState(ScanSession& session, QObject* parent)
    : QObject(parent), session_(session), rows_(session.findings(), session.cleanupQueue()) {
  connect(&rows_, &DuplicateListModel::countChanged, this, &DuplicateListState::hasRowsChanged);
}

void DuplicateListState::showOnMap(const NodeHandle& node) {
  if (node.isValid()) session_.focusPath(node.node()->path());
}

void DuplicateListState::addToQueue(const NodeHandle& node) {
  if (node.isValid()) session_.cleanupQueue().addToQueue(*node.node());
}

}  // namespace tessaly
