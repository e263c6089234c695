#include "app/panes/CloneListModel.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "app/model/DisplayText.h"
#include "app/model/RowNode.h"
#include "platform/CheckedArithmetic.h"
#include "scan/Format.h"

namespace tessaly {

namespace {

QString bytesText(std::int64_t bytes) {
  return QString::fromStdString(Format::bytes(bytes));
}

}  // namespace

CloneListModel::CloneListModel(const Findings& findings, QObject* parent)
    : QAbstractListModel(parent), findings_(findings) {
  connect(&findings_, &Findings::cloneGroupsChanged, this, &CloneListModel::follow);
  follow();
}

void CloneListModel::follow() {
  std::vector<Row> rows;
  for (const ShareGroup& group : findings_.cloneGroups()) {
    const std::size_t first = rows.size();
    for (const ShareRecord& file : group.files)
      rows.push_back({.file = {.name = file.name, .path = file.path, .size = file.logical}});
    if (rows.size() == first) continue;
    rows[first].heading = {.isClone = group.kind == "clone",
                           .files = group.files.size(),
                           .logical = group.logical,
                           .unique = group.unique};
  }
  rows_.set(std::move(rows), [](const Row& row) { return row.file.path; });
}

int CloneListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_.count();
}

QVariant CloneListModel::of(const Heading& heading, int role) {
  switch (role) {
    case KindRole:
      return heading.isClone ? QStringLiteral("Clone") : QStringLiteral("Hard link");
    case CountRole:
      return QString::number(heading.files) + u'×';
    case SavesRole: {
      const std::int64_t saving = checkedAdd(heading.logical, checkedMul(heading.unique, -1));
      return QStringLiteral("saves ") + bytesText(std::max<std::int64_t>(0, saving));
    }
    default:
      return QStringLiteral("Logical %1 · unique %2")
          .arg(bytesText(heading.logical), bytesText(heading.unique));
  }
}

QVariant CloneListModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const Row& row = rows_.at(index.row());
  switch (role) {
    case KindRole:
    case CountRole:
    case SavesRole:
    case SizesRole:
      return row.heading ? of(*row.heading, role) : QString();
    case NameRole:
      return displayText(row.file.name);
    case PlaceRole:
      return displayText(row.file.path);
    case NodeRole:
      return QVariant::fromValue(RowNode::ofFile(row.file));
    default:
      return {};
  }
}

QHash<int, QByteArray> CloneListModel::roleNames() const {
  return {{KindRole, "kindText"},   {CountRole, "countText"}, {SavesRole, "savesText"},
          {SizesRole, "sizesText"}, {NameRole, "name"},       {PlaceRole, "place"},
          {NodeRole, "node"}};
}

}  // namespace tessaly
