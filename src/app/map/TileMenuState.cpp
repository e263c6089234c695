#include "app/map/TileMenuState.h"

namespace tessaly {

TileMenuState::TileMenuState(ScanSession& session, QObject* parent)
    : QObject(parent), session_(session) {
  connect(&session_.removal(), &Removal::movingChanged, this, &TileMenuState::canTrashChanged);
}

void TileMenuState::setNode(const NodeHandle& node) {
  node_ = node;
  emit nodeChanged();
}

bool TileMenuState::canOpenFolder() const {
  return node_.isValid() && node_.node()->isDir() && !node_.node()->children().empty();
}

void TileMenuState::addToQueue() {
  if (node_.isValid()) session_.cleanupQueue().addToQueue(*node_.node());
}

void TileMenuState::zipThenTrash() {
  if (node_.isValid()) session_.zipThenTrash({*node_.node()});
}

}  // namespace tessaly
