#include "app/panes/CloudListModel.h"

#include "app/model/DisplayText.h"
#include "app/model/NodeHandle.h"
#include "scan/Format.h"

namespace tessaly {

namespace {

DiskNode nodeOf(const CloudItem& item) {
  DiskNode::Fields fields;
  fields.name = item.name;
  fields.path = item.path;
  fields.size = item.size;
  return DiskNode(fields);
}

}  // namespace

CloudListModel::CloudListModel(const Findings& findings, QObject* parent)
    : QAbstractListModel(parent), findings_(findings) {
  connect(&findings_, &Findings::cloudItemsChanged, this, &CloudListModel::follow);
  follow();
}

void CloudListModel::follow() {
  rows_.set(findings_.cloudItems(), &CloudItem::path);
}

int CloudListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_.count();
}

QVariant CloudListModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const CloudItem& item = rows_.at(index.row());
  switch (role) {
    case NameRole:
      return displayText(item.name);
    case PlaceRole:
      return displayText(item.path);
    case SizeRole:
      return QString::fromStdString(Format::bytes(item.size));
    case NodeRole:
      return QVariant::fromValue(NodeHandle(nodeOf(item)));
    default:
      return {};
  }
}

QHash<int, QByteArray> CloudListModel::roleNames() const {
  return {{NameRole, "name"}, {PlaceRole, "place"}, {SizeRole, "sizeText"}, {NodeRole, "node"}};
}

}  // namespace tessaly
