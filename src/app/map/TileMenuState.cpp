#include "app/map/TileMenuState.h"

namespace tessaly {

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
