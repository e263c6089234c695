#include "session/Shown.h"

#include <utility>

#include "scan/Remainder.h"

namespace tessaly {

void Shown::setPane(MainPane pane) {
  setField(this, pane_, pane, &Shown::paneChanged);
}

void Shown::setPane(FieldChanges& changes, MainPane pane) {
  changes.set(this, pane_, pane, &Shown::paneChanged);
}

void Shown::setVizMode(VizMode mode) {
  setField(this, vizMode_, mode, &Shown::vizModeChanged);
}

void Shown::setVizMode(FieldChanges& changes, VizMode mode) {
  changes.set(this, vizMode_, mode, &Shown::vizModeChanged);
}

void Shown::setHeatmap(bool on) {
  setField(this, heatmap_, on, &Shown::heatmapChanged);
}

void Shown::setSearchOpen(bool open) {
  setField(this, searchOpen_, open, &Shown::searchOpenChanged);
}

void Shown::setAiOpen(bool open) {
  setField(this, aiOpen_, open, &Shown::aiOpenChanged);
}

void Shown::setOcrOpen(bool open) {
  setField(this, ocrOpen_, open, &Shown::ocrOpenChanged);
}

void Shown::setMenuNode(std::optional<DiskNode> node) {
  FieldChanges changes;
  setMenuNode(changes, std::move(node));
  changes.announce();
}

void Shown::setMenuNode(FieldChanges& changes, std::optional<DiskNode> node) {
  if (node && isRemainder(*node)) return;
  changes.set(this, menuNode_, std::move(node), &Shown::menuNodeChanged);
}

}  // namespace tessaly
