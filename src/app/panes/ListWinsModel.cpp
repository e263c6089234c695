#include "app/panes/ListWinsModel.h"

#include <utility>

#include <QStringList>

#include "app/model/DisplayText.h"
#include "app/model/PathHandle.h"
#include "app/model/RowNode.h"
#include "scan/Format.h"

namespace tessaly {

namespace {

QString noteOf(const ListWinsModel::Row& row) {
  return row.isGone ? QStringLiteral("No longer there. The next scan removes it from this list.")
                    : displayText(row.note);
}

QString sizeOf(const ListWinsModel::Row& row) {
  return QString::fromStdString(Format::bytes(row.bytes));
}

QString labelOf(const ListWinsModel::Row& row) {
  QStringList parts = {displayText(row.title)};
  if (row.caution) parts << QStringLiteral("caution");
  parts << sizeOf(row) << noteOf(row);
  return parts.join(QStringLiteral(", "));
}

}  // namespace

void ListWinsModel::set(std::vector<Row> rows) {
  rows_.set(std::move(rows), &Row::key);
}

int ListWinsModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_.count();
}

QVariant ListWinsModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const Row& row = rows_.at(index.row());
  switch (role) {
    case LabelRole:
      return labelOf(row);
    case SectionRole:
      return QString::fromStdString(row.section);
    case CategoryRole:
      return displayText(row.category);
    case TitleRole:
      return displayText(row.title);
    case NoteRole:
      return noteOf(row);
    case SizeRole:
      return sizeOf(row);
    case CautionRole:
      return row.caution;
    case TrashActionRole:
      return row.isTrash;
    case PickedRole:
      return row.isPicked;
    case TickableRole:
      return row.isPicked || !row.isGone;
    case PathRole:
      return QVariant::fromValue(PathHandle(row.path));
    case NodeRole:
      return QVariant::fromValue(
          row.isTrash || row.isGone ? NodeHandle() : RowNode::of(navigation_, row.path, row.bytes));
    default:
      return {};
  }
}

QHash<int, QByteArray> ListWinsModel::roleNames() const {
  return {{LabelRole, "label"},       {SectionRole, "section"},
          {CategoryRole, "category"}, {TitleRole, "title"},
          {NoteRole, "note"},         {SizeRole, "sizeText"},
          {CautionRole, "caution"},   {TrashActionRole, "trashAction"},
          {PickedRole, "picked"},     {TickableRole, "tickable"},
          {PathRole, "path"},         {NodeRole, "node"}};
}

}  // namespace tessaly
