#include "app/window/BreadcrumbModel.h"

#include <utility>
#include <vector>

#include "app/model/DisplayText.h"
#include "scan/ShownName.h"

namespace tessaly {

BreadcrumbModel::BreadcrumbModel(Navigation& navigation, QObject* parent)
    : QAbstractListModel(parent), navigation_(navigation) {
  connect(&navigation_, &Navigation::stackChanged, this, &BreadcrumbModel::follow);
  follow();
}

void BreadcrumbModel::follow() {
  std::vector<Crumb> wanted;
  for (const DiskNode& node : navigation_.stack()) wanted.push_back({node.path(), shownName(node)});
  if (!wanted.empty()) {
    wanted.front().isFirst = true;
    wanted.back().isLast = true;
  }
  crumbs_.set(std::move(wanted), &Crumb::path);
}

void BreadcrumbModel::jump(int row) {
  navigation_.jump(row);
}

int BreadcrumbModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : crumbs_.count();
}

QVariant BreadcrumbModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const Crumb& crumb = crumbs_.at(index.row());
  switch (role) {
    case NameRole:
      return displayText(crumb.name);
    case FirstRole:
      return crumb.isFirst;
    case LastRole:
      return crumb.isLast;
    default:
      return {};
  }
}

QHash<int, QByteArray> BreadcrumbModel::roleNames() const {
  return {{NameRole, "name"}, {FirstRole, "first"}, {LastRole, "last"}};
}

}  // namespace tessaly
