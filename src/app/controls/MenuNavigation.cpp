#include "app/controls/MenuNavigation.h"

#include <algorithm>

namespace tessaly {

namespace {

constexpr const char* scrolled = "contentY";

bool isAny(const MenuRow& /*row*/) {
  return true;
}

bool canBeChosen(const MenuRow* row) {
  return row != nullptr && row->isVisible() && row->isEnabled();
}

}  // namespace

void MenuNavigation::setColumn(QQuickItem* column) {
  if (column == nullptr || column == column_) return;
  column_ = column;
  connect(column_, &QQuickItem::childrenChanged, this, &MenuNavigation::adopt);
  adopt();
  emit columnChanged();
}

void MenuNavigation::adopt() {
  for (QQuickItem* child : column_->childItems()) {
    auto* const row = qobject_cast<MenuRow*>(child);
    if (row == nullptr) continue;
    connect(row, &MenuRow::picked, this, &MenuNavigation::chosen, Qt::UniqueConnection);
  }
}

void MenuNavigation::reset() {
  for (QQuickItem* child : column_->childItems()) child->setFocus(false);
  view_->setProperty(scrolled, 0.0);
}

// A row that can no longer be chosen keeps the position.
int MenuNavigation::position() const {
  const QList<QQuickItem*> all = column_->childItems();
  const auto found = std::ranges::find_if(all, &QQuickItem::hasFocus);
  return found == all.end() ? -1 : static_cast<int>(found - all.begin());
}

MenuRow* MenuNavigation::highlighted() const {
  const int here = position();
  auto* const row = here < 0 ? nullptr : qobject_cast<MenuRow*>(column_->childItems()[here]);
  return canBeChosen(row) ? row : nullptr;
}

// Wraps around; the row at `from` is tried last.
MenuRow* MenuNavigation::nearest(int from, int step, const Test& test) const {
  const QList<QQuickItem*> all = column_->childItems();
  const int count = static_cast<int>(all.size());
  for (int passed = 1; passed <= count; ++passed) {
    auto* const row = qobject_cast<MenuRow*>(all[(from + step * passed + 2 * count) % count]);
    if (canBeChosen(row) && test(*row)) return row;
  }
  return nullptr;
}

void MenuNavigation::go(int from, int step, const Test& test) {
  MenuRow* const row = nearest(from, step, test);
  if (row == nullptr) return;
  row->forceActiveFocus(Qt::OtherFocusReason);
  reveal(*row);
}

void MenuNavigation::goToFirst() {
  go(-1, 1, isAny);
}

void MenuNavigation::goToLast() {
  go(static_cast<int>(column_->childItems().size()), -1, isAny);
}

void MenuNavigation::goBy(int step) {
  const int here = position();
  if (here >= 0) {
    go(here, step, isAny);
  } else if (step > 0) {
    goToFirst();
  } else {
    goToLast();
  }
}

void MenuNavigation::goToLetter(const QString& letter) {
  go(position(), 1,
     [&letter](const MenuRow& row) { return row.text().startsWith(letter, Qt::CaseInsensitive); });
}

void MenuNavigation::press(int key, int modifiers, const QString& text, bool isAutoRepeat) {
  switch (key) {
    case Qt::Key_Up:
      goBy(-1);
      return;
    case Qt::Key_Down:
      goBy(1);
      return;
    case Qt::Key_Home:
      goToFirst();
      return;
    case Qt::Key_End:
      goToLast();
      return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
      if (MenuRow* const row = highlighted(); row != nullptr && !isAutoRepeat) emit chosen(row);
      return;
    case Qt::Key_Escape:
      emit closeAsked();
      return;
    case Qt::Key_F10:
    case Qt::Key_Menu:
      // These keys open menus: the key that opened this one may still be held.
      if (!isAutoRepeat) emit closeAsked();
      return;
    default:
      if (!text.isEmpty() && (modifiers & (Qt::ControlModifier | Qt::AltModifier)) == 0)
        goToLetter(text);
  }
}

void MenuNavigation::reveal(const QQuickItem& row) {
  // New rows may not be laid out yet.
  column_->ensurePolished();
  const double top = view_->property(scrolled).toDouble();
  const double bottom = row.y() + row.height();
  if (row.y() < top) {
    view_->setProperty(scrolled, row.y());
  } else if (bottom > top + view_->height()) {
    // A menu has no height while it opens: scroll at most to the row's top.
    view_->setProperty(scrolled, std::min(row.y(), bottom - view_->height()));
  }
}
}  // namespace tessaly
