// The canvas's reactions to the keyboard.

#include <QAccessible>
#include <QFocusEvent>
#include <QKeyEvent>

#include "app/controls/RowKeys.h"
#include "app/map/TileNeighbour.h"
#include "app/map/TreemapSurface.h"

namespace tessaly {

namespace {

std::optional<TileDirection> directionOf(int key) {
  switch (key) {
    case Qt::Key_Left:
      return TileDirection::left;
    case Qt::Key_Right:
      return TileDirection::right;
    case Qt::Key_Up:
      return TileDirection::up;
    case Qt::Key_Down:
      return TileDirection::down;
    default:
      return std::nullopt;
  }
}

QPointF middleOfFace(const TreemapRect& rect) {
  const Rect face = TileNeighbour::faceOf(rect);
  return {face.x + face.width / 2, face.y + face.height / 2};
}

}  // namespace

void TreemapSurface::keyPressEvent(QKeyEvent* event) {
  event->setAccepted(actOn(*event));
}

bool TreemapSurface::actOn(const QKeyEvent& event) {
  if (event.key() == Qt::Key_Escape) {
    if (map_->navigation().stack().size() < 2) return false;
    map_->navigation().back();
    return true;
  }
  makeTiles();
  const auto direction = directionOf(event.key());
  const bool opens = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
  const bool asksForMenu = RowKeys::asksForMenu(event.key(), event.modifiers());
  if (!direction && !opens && !asksForMenu) return false;
  // Arrows with a modifier have no meaning here.
  if (direction && (event.modifiers() & ~Qt::KeypadModifier) != 0) return false;
  if (tiles_.all().empty() || gesture_.isDragging()) return true;
  // A held key must not open the folder's content, too.
  if (opens && event.isAutoRepeat()) return true;

  // The first key only highlights a tile, unless the pointer has done so. A key with an action acts
  // at once only on the focused item.
  if (!hovered_) {
    const std::size_t start = *keyboardStart();
    const bool isKnown = hasFocus(tiles_[start].rect.node);
    putKeyboardOn(start);
    if (direction || !isKnown) return true;
  }
  if (direction) {
    if (const auto next = TileNeighbour::of(tiles_.all(), *hovered_, *direction)) {
      putKeyboardOn(*next);
    }
    return true;
  }
  const TreemapRect tile = tiles_[*hovered_].rect;  // the handlers may replace the tiles
  if (opens) {
    click(tile.node, event.modifiers());
  } else {
    askForMenu(tile.node, middleOfFace(tile), true);
  }
  return true;
}

// The tile where the keyboard starts: that of the focused item, the innermost one around it, or the
// first one.
std::optional<std::size_t> TreemapSurface::keyboardStart() const {
  if (tiles_.all().empty()) return std::nullopt;
  std::optional<std::size_t> start;
  if (const auto& focused = map_->selection().focused()) {
    const std::string path = focused->path();
    for (std::size_t i = 0; i < tiles_.all().size(); ++i) {
      const DiskNode& node = tiles_[i].rect.node;
      // Inner tiles come later.
      if (hasFocus(node) || path.starts_with(node.path() + "/")) start = i;
    }
  }
  return start ? start : 0;
}

void TreemapSurface::putKeyboardOn(std::size_t index) {
  const DiskNode node = tiles_[index].rect.node;  // handlers may replace the tiles
  keyboardPath_ = node.path();
  highlight(index);
  placeTooltip();
  map_->selection().setFocused(node);
  emit keyboardTileChanged();
}

// Beside the pointer, or beside the keyboard's tile.
void TreemapSurface::placeTooltip() {
  const bool isByKeyboard = keyboardPath_ && hovered_;
  const QPointF place = isByKeyboard ? middleOfFace(tiles_[*hovered_].rect) : mouse_;
  tooltip_.pointAt(place, size());
}

void TreemapSurface::takeKeyboardAway() {
  if (!keyboardPath_) return;
  keyboardPath_ = std::nullopt;
  if (!stale_) {
    highlight(tileToKeep());
    placeTooltip();
  }
  emit keyboardTileChanged();
}

void TreemapSurface::takeKeyboard() {
  forceActiveFocus(Qt::OtherFocusReason);
  if (gesture_.isDragging()) return;
  const auto& focused = map_->selection().focused();
  keyboardPath_ = focused ? focused->path() : std::string();
  renew();
}

int TreemapSurface::keyboardTile() const {
  const auto index = keyboardPath_ ? tiles_.find(*keyboardPath_) : std::nullopt;
  return index ? static_cast<int>(*index) : -1;
}

void TreemapSurface::focusInEvent(QFocusEvent* event) {
  QQuickItem::focusInEvent(event);
  if (event->reason() != Qt::TabFocusReason && event->reason() != Qt::BacktabFocusReason) return;
  makeTiles();
  if (keyboardPath_ || gesture_.isDragging()) return;
  if (const auto start = keyboardStart()) putKeyboardOn(*start);
}

void TreemapSurface::focusOutEvent(QFocusEvent* event) {
  QQuickItem::focusOutEvent(event);
  // When a menu closes or the window becomes active again, the keyboard continues on its tile.
  if (event->reason() == Qt::PopupFocusReason || event->reason() == Qt::ActiveWindowFocusReason ||
      event->reason() == Qt::MenuBarFocusReason) {
    return;
  }
  takeKeyboardAway();
}

void TreemapSurface::press(const NodeHandle& node) {
  if (node.isValid()) click(*node.node(), Qt::NoModifier);
}

void TreemapSurface::toggle(const NodeHandle& node) {
  if (node.isValid()) click(*node.node(), Qt::ShiftModifier);
}

void TreemapSurface::tellFocus(QQuickItem* element) const {
  if (element == nullptr) return;
  QAccessibleEvent event(element, QAccessible::Focus);
  QAccessible::updateAccessibility(&event);
}

}  // namespace tessaly
