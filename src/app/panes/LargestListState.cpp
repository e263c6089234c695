#include "app/panes/LargestListState.h"

namespace tessaly {

LargestListState::LargestListState(ScanSession& session, QObject* parent)
    : QObject(parent), session_(session) {
  connect(&session_.result(), &ScanResult::largestChanged, this, &LargestListState::follow);
  follow();
}

void LargestListState::follow() {
  rows_.set(session_.result().largest());
}

void LargestListState::showOnMap(const NodeHandle& node) {
  if (node.isValid()) session_.focusPath(node.node()->path());
}

void LargestListState::addToQueue(const NodeHandle& node) {
  if (node.isValid()) session_.cleanupQueue().addToQueue(*node.node());
}

}  // namespace tessaly
