#include "app/panes/AliasListModel.h"

#include "app/model/DisplayText.h"
#include "app/model/NodeHandle.h"

namespace tessaly {

namespace {

DiskNode nodeOf(const DeadLink& link) {
  DiskNode::Fields fields;
  fields.name = link.name;
  fields.path = link.path;
  fields.kind = FileKind::other;
  return DiskNode(fields);
}

}  // namespace

AliasListModel::AliasListModel(const Findings& findings, QObject* parent)
    : QAbstractListModel(parent), findings_(findings) {
  connect(&findings_, &Findings::deadLinksChanged, this, &AliasListModel::follow);
  follow();
}

void AliasListModel::follow() {
  rows_.set(findings_.deadLinks(), &DeadLink::path);
}

int AliasListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_.count();
}

QVariant AliasListModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const DeadLink& link = rows_.at(index.row());
  switch (role) {
    case NameRole:
      return displayText(link.name);
    case PlaceRole:
      return displayText(link.path);
    case TargetRole:
      return link.destination.empty() ? QString()
                                      : QStringLiteral("→ ") + displayText(link.destination);
    case KindRole:
      return displayText(link.kind);
    case LockRole:
      return link.isLock;
    case NodeRole:
      return QVariant::fromValue(NodeHandle(nodeOf(link)));
    default:
      return {};
  }
}

QHash<int, QByteArray> AliasListModel::roleNames() const {
  return {{NameRole, "name"},     {PlaceRole, "place"}, {TargetRole, "target"},
          {KindRole, "kindText"}, {LockRole, "isLock"}, {NodeRole, "node"}};
}

}  // namespace tessaly
