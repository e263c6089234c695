#include "app/quicklook/PreviewRowsModel.h"

#include <utility>

namespace tessaly {

void PreviewRowsModel::setRows(std::vector<PreviewRow> rows) {
  beginResetModel();
  rows_ = std::move(rows);
  endResetModel();
}

int PreviewRowsModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant PreviewRowsModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const PreviewRow& row = rows_[static_cast<std::size_t>(index.row())];
  switch (role) {
    case SymbolRole:
      return row.symbol;
    case NameRole:
      return row.name;
    case ValueRole:
      return row.value;
    default:
      return {};
  }
}

QHash<int, QByteArray> PreviewRowsModel::roleNames() const {
  return {{SymbolRole, "symbol"}, {NameRole, "name"}, {ValueRole, "value"}};
}

}  // namespace tessaly
