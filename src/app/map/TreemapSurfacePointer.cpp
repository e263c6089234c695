// The canvas's reactions to the pointer.

#include <utility>

#include <QCursor>
#include <QHoverEvent>
#include <QMouseEvent>
#include <QQuickWindow>

#include "app/map/MapPicture.h"
#include "app/map/PointerWatch.h"
#include "app/map/TooltipText.h"
#include "app/map/TreemapSurface.h"
#include "scan/Remainder.h"
#include "treemap/NodeTint.h"

namespace tessaly {

void TreemapSurface::hoverEnterEvent(QHoverEvent* event) {
  hoverMoveEvent(event);
}

void TreemapSurface::hoverMoveEvent(QHoverEvent* event) {
  setMouse(event->position());
}

void TreemapSurface::hoverLeaveEvent(QHoverEvent*) {
  pointerInside_ = false;
  highlight(tileToKeep());
}

void TreemapSurface::setMouse(QPointF mouse) {
  const bool hasMoved = window() != nullptr && PointerWatch::of(*window()).takeMove();
  mouse_ = mouse;
  pointerInside_ = contains(mouse);
  if ((keyboardPath_ && !hasMoved) || menuPath()) return;
  if (std::exchange(keyboardPath_, std::nullopt)) emit keyboardTileChanged();
  placeTooltip();
  // Tiles that are out of date are not the ones that the pointer will be on.
  if (stale_) return;
  if (hasMoved) {
    comeTo(tileUnderPointer());
  } else {
    highlight(tileToKeep());
  }
}

std::optional<std::size_t> TreemapSurface::tileUnderPointer() {
  if (gesture_.isDragging()) return std::nullopt;
  const auto index = pointerInside_ ? tiles_.at(mouse_) : std::nullopt;
  if (index && passedOverPath_ == tiles_[*index].rect.node.path()) return std::nullopt;
  passedOverPath_ = std::nullopt;
  return index;
}

// The tile to highlight if neither pointer nor keyboard has moved.
std::optional<std::size_t> TreemapSurface::tileToKeep() {
  if (gesture_.isDragging()) return std::nullopt;
  if (const auto asked = menuPath()) {
    const auto tile = tiles_.find(*asked);
    return tile && !isRemainder(tiles_[*tile].rect.node) ? tile : std::nullopt;
  }
  if (keyboardPath_) return tiles_.find(*keyboardPath_);
  const auto index = tileUnderPointer();
  if (!index || index == hovered_) return index;
  const DiskNode& node = tiles_[*index].rect.node;
  const bool isKnown = hasFocus(node) || (!isRemainder(node) && hoverPath_ == node.path());
  return isKnown ? index : std::nullopt;
}

bool TreemapSurface::hasFocus(const DiskNode& node) const {
  const auto& focused = map_->selection().focused();
  // A remainder may share its path with a file of the disk.
  return focused && focused->path() == node.path() && isRemainder(*focused) == isRemainder(node);
}

// Handles that the pointer has entered the tile at `index`, or left all tiles.
void TreemapSurface::comeTo(std::optional<std::size_t> index) {
  const bool isAnother = index != hovered_;
  highlight(index);
  if (!index || !isAnother) return;
  const DiskNode node = tiles_[*index].rect.node;  // handlers may replace the tiles
  map_->selection().setFocused(node);
}

void TreemapSurface::highlight(std::optional<std::size_t> index) {
  if (index && hovered_ == index) return;
  hovered_ = index;
  if (!index) {
    hoverPath_ = std::nullopt;
    hoverOverlay_->clear();
    tooltip_.hide();
    unsetCursor();
    return;
  }
  const CanvasTile& tile = tiles_[*index];
  const std::string path = tile.rect.node.path();
  if (hoverPath_ != path) {
    hoverPath_ = path;
    setCursor(Qt::PointingHandCursor);
  }
  showHighlight();
  if (menuPath()) {
    tooltip_.hide();
    return;
  }
  tooltip_.show(TooltipText::of(tile.rect, map_->shown().heatmap(), NodeTint::presentTime()),
                tile.tint);
}

void TreemapSurface::showHighlight() {
  const auto pieces = MapPicture::highlight(tiles_, *hovered_, size(), scale(), labels_);
  if (!pieces.empty()) {
    hoverOverlay_->show(pieces);
  } else {
    hoverOverlay_->clear();
  }
}

void TreemapSurface::mousePressEvent(QMouseEvent* event) {
  forceActiveFocus(Qt::MouseFocusReason);
  const auto index = tiles_.at(event->position());
  if (event->button() == Qt::RightButton) {
    if (index && !gesture_.isPressed()) {
      askForMenu(tiles_[*index].rect.node, event->position(), false);
    }
    return;
  }
  pressedPath_ = index ? std::optional(tiles_[*index].rect.node.path()) : std::nullopt;
  gesture_.press(event->position());
}

void TreemapSurface::mouseMoveEvent(QMouseEvent* event) {
  const bool wasDragging = gesture_.isDragging();
  if (gesture_.moveTo(event->position())) {
    if (!wasDragging) escapeWatch_.listenIn(window());
    // However often the pointer moves, the band is drawn once per frame.
    polish();
  }
  setMouse(event->position());
}

void TreemapSurface::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  if (gesture_.moveTo(event->position())) {
    setMouse(event->position());
    selectBand(event->modifiers());
    return;
  }
  gesture_.end();
  const auto pressedPath = std::exchange(pressedPath_, std::nullopt);
  const auto index = tiles_.at(event->position());
  if (pressedPath && index && tiles_[*index].rect.node.path() == pressedPath) {
    click(tiles_[*index].rect.node, event->modifiers());
  }
}

void TreemapSurface::mouseUngrabEvent() {
  dropBand();
}

void TreemapSurface::drawBand() {
  if (const auto band = gesture_.band(); band && window() != nullptr) {
    bandItem_->show(*band, size(), scale());
  } else {
    bandItem_->hide();
  }
}

void TreemapSurface::selectBand(Qt::KeyboardModifiers modifiers) {
  makeTiles();  // of a tree that has just arrived, instead of the previous one
  const std::vector<DiskNode> hits = tiles_.within(*gesture_.band());
  dropBand();
  map_->selection().selectNodes(hits, modifiers.testFlag(Qt::ShiftModifier));
}

// Ends the drag. The pointer has not entered the tile that it is on.
void TreemapSurface::dropBand() {
  if (gesture_.isDragging()) {
    const auto index = tiles_.at(mouse_);
    passedOverPath_ = index ? std::optional(tiles_[*index].rect.node.path()) : std::nullopt;
    polish();
  }
  gesture_.end();
  pressedPath_ = std::nullopt;
  escapeWatch_.listenIn(nullptr);
}

void TreemapSurface::askForMenu(const DiskNode& node, QPointF place, bool byKeyboard) {
  // No entry of the menu applies to a remainder.
  if (isRemainder(node)) return;
  askedPath_ = node.path();
  emit tileMenuAsked(NodeHandle(node), place, byKeyboard);
}

void TreemapSurface::setMenuOpen(bool open) {
  if (open == menuOpen_) return;
  menuOpen_ = open;
  followMenu();
  emit menuOpenChanged();
}

// The item with an open menu or question.
std::optional<std::string> TreemapSurface::menuPath() const {
  if (menuOpen_) return askedPath_;
  if (const auto& asked = map_->shown().menuNode()) return asked->path();
  return std::nullopt;
}

void TreemapSurface::followMenu() {
  // New tiles will be highlighted when they are made.
  if (stale_) return;
  hovered_ = std::nullopt;
  highlight(tileToKeep());
}

void TreemapSurface::click(const DiskNode& node, Qt::KeyboardModifiers modifiers) {
  const DiskNode clicked = node;  // the handlers may replace the tiles
  map_->selection().setFocused(clicked);
  if (isRemainder(clicked)) return;
  if (modifiers.testFlag(Qt::ShiftModifier)) {
    map_->selection().toggleSelect(clicked);
  } else if (modifiers.testFlag(Qt::ControlModifier)) {  // Command on macOS
    map_->queue(clicked);
  } else if (clicked.isDir() && !clicked.children().empty()) {
    emit open(NodeHandle(clicked));
  } else {
    map_->navigation().reveal(clicked);
  }
}

}  // namespace tessaly
