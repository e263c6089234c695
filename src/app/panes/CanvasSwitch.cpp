#include "app/panes/CanvasSwitch.h"

namespace tessaly {

void CanvasSwitch::setMap(DiskMapState* map) {
  if (map == nullptr || map_ != nullptr) return;
  map_ = map;
  connect(map_, &DiskMapState::placeChanged, this, &CanvasSwitch::remake);
  connect(map_, &DiskMapState::screenChanged, this, &CanvasSwitch::activeChanged);
  emit mapChanged();
  emit activeChanged();
}

bool CanvasSwitch::isActive() const {
  return map_ != nullptr && map_->showsTreemap() && !isRemaking_;
}

void CanvasSwitch::setRemaking(bool remaking) {
  isRemaking_ = remaking;
  emit activeChanged();
}

void CanvasSwitch::remake() {
  // A menu of the canvas returns the focus to the canvas when it closes.
  const bool hadKeyboard =
      canvas_ != nullptr && (canvas_->hasActiveFocus() || canvas_->isMenuOpen());
  const bool wasOnTile = canvas_ != nullptr && canvas_->hasKeyboard();
  setRemaking(true);
  setRemaking(false);
  if (canvas_ == nullptr || !hadKeyboard) return;
  if (wasOnTile) {
    canvas_->takeKeyboard();
  } else {
    canvas_->forceActiveFocus();
  }
}

}  // namespace tessaly
