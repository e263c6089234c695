#include "app/commands/CommandTarget.h"

namespace tessaly {

namespace {

// The innermost row around `item`, or null.
QQuickItem* rowAround(QQuickItem* item) {
  while (item != nullptr && CommandRow::of(item) == nullptr) item = item->parentItem();
  return item;
}

bool isInMenu(const QQuickItem* item) {
  while (item != nullptr && !item->inherits("QQuickOverlay")) item = item->parentItem();
  return item != nullptr;
}

}  // namespace

CommandTarget::CommandTarget(ScanSession& session, QObject* parent)
    : QObject(parent), session_(session) {
  connect(&session_.selection(), &Selection::focusedChanged, this, &CommandTarget::changed);
  connect(&session_.shown(), &Shown::vizModeChanged, this, &CommandTarget::changed);
}

void CommandTarget::follow(QQuickWindow& window) {
  window_ = &window;
  connect(&window, &QQuickWindow::activeFocusItemChanged, this, &CommandTarget::takeFocus);
  takeFocus();
}

void CommandTarget::takeFocus() {
  QQuickItem* const focus = window_->activeFocusItem();
  // A window that is not active has no such item, and returns the focus to the old one later.
  if (focus == nullptr || isInMenu(focus)) return;
  takeRow(rowAround(focus));
}

void CommandTarget::takeRow(QQuickItem* row) {
  if (row == row_) return;
  if (row_) {
    disconnect(row_, nullptr, this, nullptr);
    if (CommandRow* const offer = CommandRow::of(row_)) disconnect(offer, nullptr, this, nullptr);
  }
  row_ = row;
  if (row_) {
    connect(row_, &QQuickItem::visibleChanged, this, &CommandTarget::changed);
    connect(row_, &QObject::destroyed, this, &CommandTarget::changed);
    connect(CommandRow::of(row_), &CommandRow::nodeChanged, this, &CommandTarget::changed);
  }
  emit changed();
}

bool CommandTarget::isOnMap() const {
  return session_.shown().vizMode() == VizMode::treemap;
}

const CommandRow* CommandTarget::offer() const {
  return row_ && row_->isVisible() ? CommandRow::of(row_) : nullptr;
}

bool CommandTarget::mayRemove() const {
  return isOnMap() || (offer() != nullptr && offer()->isRemovable());
}

NodeHandle CommandTarget::node() const {
  if (isOnMap()) return NodeHandle(session_.selection().focused());
  return offer() != nullptr ? offer()->node() : NodeHandle();
}

void CommandTarget::addToQueue() {
  if (!mayRemove()) return;
  // A copy: the session may reset its own meanwhile.
  if (const NodeHandle target = node(); target.isValid())
    session_.cleanupQueue().addToQueue(*target.node());
}

void CommandTarget::moveToTrash() {
  if (!mayRemove()) return;
  if (isOnMap()) {
    session_.trashFocused();
  } else if (const NodeHandle target = node(); target.isValid()) {
    session_.trashRecording(*target.node());
  }
}

void CommandTarget::copyPath() {
  session_.selection().copySelectedPaths(node().node());
}

}  // namespace tessaly
