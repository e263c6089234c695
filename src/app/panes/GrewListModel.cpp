#include "app/panes/GrewListModel.h"

#include <cstdint>

#include "app/model/DisplayText.h"
#include "app/model/RowNode.h"
#include "platform/CheckedArithmetic.h"
#include "scan/Format.h"

namespace tessaly {

GrewListModel::GrewListModel(const ScanResult& result, const Navigation& navigation,
                             QObject* parent)
    : QAbstractListModel(parent), result_(result), navigation_(navigation) {
  connect(&result_, &ScanResult::deltasChanged, this, &GrewListModel::follow);
  follow();
}

void GrewListModel::follow() {
  if (rows_.set(result_.deltas(), &ScanDelta::path)) emit countChanged();
}

int GrewListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_.count();
}

QVariant GrewListModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const ScanDelta& delta = rows_.at(index.row());
  switch (role) {
    case NameRole:
      return displayText(delta.name);
    case PlaceRole:
      return displayText(delta.path);
    case GrowthRole: {
      const std::int64_t growth = checkedAdd(delta.after, checkedMul(delta.before, -1));
      return QLatin1Char('+') + QString::fromStdString(Format::bytes(growth));
    }
    case SizeRole:
      return QString::fromStdString(Format::bytes(delta.after));
    case PathRole:
      return QVariant::fromValue(PathHandle(delta.path));
    case NodeRole:
      return QVariant::fromValue(RowNode::of(navigation_, delta.path, delta.after));
    default:
      return {};
  }
}

QHash<int, QByteArray> GrewListModel::roleNames() const {
  return {{NameRole, "name"},     {PlaceRole, "place"}, {GrowthRole, "growthText"},
          {SizeRole, "sizeText"}, {PathRole, "path"},   {NodeRole, "node"}};
}

}  // namespace tessaly
