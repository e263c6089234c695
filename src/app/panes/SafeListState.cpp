#include "app/panes/SafeListState.h"

namespace tessaly {

SafeListState::SafeListState(ScanSession& session, QObject* parent)
    : QObject(parent), session_(session), rows_(session.findings()) {}

void SafeListState::showOnMap(const NodeHandle& node) {
  if (node.isValid()) session_.focusPath(node.node()->path());
}

void SafeListState::addToQueue(const NodeHandle& node) {
  if (node.isValid()) session_.cleanupQueue().addToQueue(*node.node());
}

}  // namespace tessaly
