#include "app/controls/RowButtons.h"

namespace tessaly {

namespace {

bool isButton(const QQuickItem& item) {
  return item.inherits("QQuickAbstractButton");
}

}  // namespace

double RowButtons::stopAt(double x, bool forward) const {
  std::vector<RowStops::Span> buttons;
  if (row_ != nullptr) collect(*row_, buttons);
  return RowStops::stopAt(x, buttons, forward);
}

// The layout of the children may be pending.
void RowButtons::finish(QQuickItem& item) {
  if (isButton(item)) return;
  for (QQuickItem* child : item.childItems()) finish(*child);
  item.ensurePolished();
}

void RowButtons::updatePolish() {
  if (row_ != nullptr) finish(*row_);
  emit laidOut();
}

void RowButtons::collect(QQuickItem& item, std::vector<RowStops::Span>& found) const {
  if (!item.isVisible()) return;
  if (isButton(item)) {
    const double left = item.mapToItem(row_->parentItem(), QPointF()).x();
    found.push_back({left, left + item.width()});
    return;
  }
  for (QQuickItem* child : item.childItems()) collect(*child, found);
}

}  // namespace tessaly
