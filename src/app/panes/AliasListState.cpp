#include "app/panes/AliasListState.h"

namespace tessaly {

AliasListState::AliasListState(ScanSession& session, QObject* parent)
    : QObject(parent), session_(session), rows_(session.findings()) {}

void AliasListState::showOnMap(const NodeHandle& node) {
  if (node.isValid()) session_.focusPath(node.node()->path());
}

void AliasListState::addToQueue(const NodeHandle& node) {
  if (node.isValid()) session_.cleanupQueue().addToQueue(*node.node());
}

}  // namespace tessaly
