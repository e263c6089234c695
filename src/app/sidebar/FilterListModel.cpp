#include "app/sidebar/FilterListModel.h"

namespace tessaly {

FilterListModel::FilterListModel(const Choices& choices, QObject* parent)
    : QAbstractListModel(parent), choices_(choices) {
  connect(&choices_, &Choices::filtersChanged, this, &FilterListModel::follow);
  follow();
}

void FilterListModel::follow() {
  filters_.set(choices_.filters(), &BloatFilter::id);
}

int FilterListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : filters_.count();
}

QVariant FilterListModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const BloatFilter& filter = filters_.at(index.row());
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
