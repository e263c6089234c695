#include "app/window/BreadcrumbModel.h"

#include <algorithm>

#include "app/model/DisplayText.h"
#include "scan/ShownName.h"

namespace tessaly {

BreadcrumbModel::BreadcrumbModel(Navigation& navigation, QObject* parent)
    : QAbstractListModel(parent), navigation_(navigation) {
  connect(&navigation_, &Navigation::stackChanged, this, &BreadcrumbModel::follow);
  follow();
}

void BreadcrumbModel::follow() {
  std::vector<Crumb> now;
  for (const DiskNode& node : navigation_.stack()) now.push_back({node.path(), shownName(node)});

  const auto [before, after] =
      std::mismatch(crumbs_.begin(), crumbs_.end(), now.begin(), now.end());
  const int kept = static_cast<int>(before - crumbs_.begin());
  const int old = static_cast<int>(crumbs_.size());
  const int count = static_cast<int>(now.size());
  if (old == kept && count == kept) return;
  if (old > kept) {
    beginRemoveRows({}, kept, old - 1);
    crumbs_.erase(before, crumbs_.end());
    endRemoveRows();
  }
  if (count > kept) {
    beginInsertRows({}, kept, count - 1);
    crumbs_.insert(crumbs_.end(), after, now.end());
    endInsertRows();
  }
  // The row before the change has become the last one, or has ceased to be it.
  if (kept > 0) emit dataChanged(index(kept - 1), index(kept - 1), {LastRole});
}

void BreadcrumbModel::jump(int row) {
  navigation_.jump(row);
}

int BreadcrumbModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(crumbs_.size());
}

QVariant BreadcrumbModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const auto row = static_cast<std::size_t>(index.row());
  switch (role) {
    case NameRole:
      return displayText(crumbs_[row].name);
    case FirstRole:
      return row == 0;
    case LastRole:
      return row + 1 == crumbs_.size();
    default:
      return {};
  }
}

QHash<int, QByteArray> BreadcrumbModel::roleNames() const {
  return {{NameRole, "name"}, {FirstRole, "first"}, {LastRole, "last"}};
}

}  // namespace tessaly
