#include "app/panes/CloneListState.h"

namespace tessaly {

CloneListState::CloneListState(ScanSession& session, QObject* parent)
    : QObject(parent), session_(session), rows_(session.findings()) {}

void CloneListState::showOnMap(const NodeHandle& node) {
  if (node.isValid()) session_.focusPath(node.node()->path());
}

}  // namespace tessaly
