#include "app/quicklook/TextLinesModel.h"

#include <utility>

namespace tessaly {

void TextLinesModel::setLines(TextLines lines) {
  beginResetModel();
  lines_ = std::move(lines);
  endResetModel();
}

int TextLinesModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(lines_.size());
}

QVariant TextLinesModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid) || role != LineRole) return {};
  return lines_[static_cast<std::size_t>(index.row())].toString();
}

QHash<int, QByteArray> TextLinesModel::roleNames() const {
  return {{LineRole, "line"}};
}

}  // namespace tessaly
