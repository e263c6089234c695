#include "app/controls/RowKeys.h"

#include <algorithm>
#include <optional>

namespace tessaly {

namespace {

std::optional<int> wanted(int key, int current, int count, int page) {
  switch (key) {
    case Qt::Key_Up:
      return current - 1;
    case Qt::Key_Down:
      return current + 1;
    case Qt::Key_PageUp:
      return current - page;
    case Qt::Key_PageDown:
      return current + page;
    case Qt::Key_Home:
      return 0;
    case Qt::Key_End:
      return count - 1;
    default:
      return std::nullopt;
  }
}

}  // namespace

int RowKeys::rowFor(int key, int current, int count, int page) {
  const auto row = wanted(key, current, count, page);
  return row && count > 0 ? std::clamp(*row, 0, count - 1) : -1;
}

bool RowKeys::asksForMenu(int key, int modifiers) {
  return key == Qt::Key_Menu || (key == Qt::Key_F10 && modifiers == Qt::ShiftModifier);
}

int RowKeys::rowsOfPage(double height, double contentHeight, int count) {
  if (contentHeight <= 0) return 1;
  const double fitting = std::min<double>(height * count / contentHeight, count);
  return std::max(1, static_cast<int>(fitting) - 1);
}

}  // namespace tessaly
