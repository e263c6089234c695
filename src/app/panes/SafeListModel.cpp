#include "app/panes/SafeListModel.h"

#include "app/model/DisplayText.h"
#include "scan/Format.h"

namespace tessaly {

namespace {

DiskNode nodeOf(const SafeItem& item) {
  DiskNode::Fields fields;
  fields.name = item.name;
  fields.path = item.path;
  fields.size = item.bytes;
  fields.kind = FileKind::other;
  return DiskNode(fields);
}

}  // namespace

SafeListModel::SafeListModel(const Findings& findings, QObject* parent)
    : QAbstractListModel(parent), findings_(findings) {
  connect(&findings_, &Findings::safeItemsChanged, this, &SafeListModel::follow);
  follow();
}

void SafeListModel::follow() {
  rows_.set(findings_.safeItems(), &SafeItem::path);
}

int SafeListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_.count();
}

QVariant SafeListModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const SafeItem& item = rows_.at(index.row());
  switch (role) {
    case NameRole:
      return displayText(item.name);
    case PlaceRole:
      return displayText(item.path);
    case ScoreRole:
      return QString::number(item.score);
    case CautionRole:
      return item.caution;
    case VerdictRole:
      return displayText(item.label + " · " + item.reason);
    case SizeRole:
      return QString::fromStdString(Format::bytes(item.bytes));
    case NodeRole:
      return QVariant::fromValue(NodeHandle(nodeOf(item)));
    default:
      return {};
  }
}

QHash<int, QByteArray> SafeListModel::roleNames() const {
  return {{NameRole, "name"},       {PlaceRole, "place"},     {ScoreRole, "scoreText"},
          {CautionRole, "caution"}, {VerdictRole, "verdict"}, {SizeRole, "sizeText"},
          {NodeRole, "node"}};
}

}  // namespace tessaly
