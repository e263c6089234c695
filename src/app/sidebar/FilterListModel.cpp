#include "app/sidebar/FilterListModel.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace tessaly {

FilterListModel::FilterListModel(const Choices& choices, QObject* parent)
    : QAbstractListModel(parent), choices_(choices) {
  connect(&choices_, &Choices::filtersChanged, this, &FilterListModel::follow);
  follow();
}

void FilterListModel::follow() {
  std::vector<BloatFilter> now = choices_.filters();
  if (!std::ranges::equal(now, filters_, {}, &BloatFilter::id, &BloatFilter::id)) {
    beginResetModel();
    filters_ = std::move(now);
    endResetModel();
    return;
  }
  for (std::size_t row = 0; row < now.size(); ++row) {
    if (now[row] == filters_[row]) continue;
    filters_[row] = now[row];
    const QModelIndex changed = index(static_cast<int>(row));
    emit dataChanged(changed, changed);
  }
}

int FilterListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(filters_.size());
}

QVariant FilterListModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const BloatFilter& filter = filters_[static_cast<std::size_t>(index.row())];
  switch (role) {
    case FilterIdRole:
      return QString::fromStdString(filter.id);
    case NameRole:
      return QString::fromStdString(filter.name);
    case SymbolNameRole:
      return QString::fromStdString(filter.symbol);
    case HighlightedRole:
      return filter.enabled;
    case SkippedRole:
      return filter.skipScan;
    default:
      return {};
  }
}

QHash<int, QByteArray> FilterListModel::roleNames() const {
  return {{FilterIdRole, "filterId"},
          {NameRole, "name"},
          {SymbolNameRole, "symbolName"},
          {HighlightedRole, "highlighted"},
          {SkippedRole, "skipped"}};
}

}  // namespace tessaly
