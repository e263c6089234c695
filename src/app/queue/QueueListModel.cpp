#include "app/queue/QueueListModel.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <unordered_map>

#include "app/model/DisplayText.h"
#include "scan/Format.h"
#include "scan/ShownName.h"

namespace tessaly {

QueueListModel::QueueListModel(const CleanupQueue& queue, QObject* parent)
    : QAbstractListModel(parent), queue_(queue) {
  connect(&queue_, &CleanupQueue::queueChanged, this, &QueueListModel::follow);
  follow();
}

bool QueueListModel::isSame(const Row& a, const Row& b) {
  return a.path == b.path && a.node.size() == b.node.size();
}

bool QueueListModel::startsWith(const std::vector<Row>& rows, const std::vector<Row>& beginning) {
  return rows.size() >= beginning.size() &&
         std::equal(beginning.begin(), beginning.end(), rows.begin(), isSame);
}

// Nodes leave from anywhere and come at the end, and that is told row by row; whatever else may
// happen is another list.
void QueueListModel::follow() {
  std::vector<Row> wanted;
  wanted.reserve(queue_.queue().size());
  for (const DiskNode& node : queue_.queue()) wanted.push_back({node.path(), node});
  removeAllBut(wanted);
  if (!startsWith(wanted, rows_)) {
    beginResetModel();
    rows_ = std::move(wanted);
    endResetModel();
    return;
  }
  if (wanted.size() == rows_.size()) return;
  beginInsertRows({}, static_cast<int>(rows_.size()), static_cast<int>(wanted.size()) - 1);
  rows_ = std::move(wanted);
  endInsertRows();
}

void QueueListModel::removeAllBut(const std::vector<Row>& wanted) {
  std::unordered_map<std::string_view, const Row*> kept;
  for (const Row& row : wanted) kept.emplace(row.path, &row);
  const auto isGone = [&](const Row& row) {
    const auto found = kept.find(row.path);
    return found == kept.end() || !isSame(row, *found->second);
  };
  // From the end, so that the rows in front keep their numbers; neighbours go in one step.
  for (auto end = rows_.size(); end > 0;) {
    if (!isGone(rows_[end - 1])) {
      --end;
      continue;
    }
    auto begin = end - 1;
    while (begin > 0 && isGone(rows_[begin - 1])) --begin;
    beginRemoveRows({}, static_cast<int>(begin), static_cast<int>(end) - 1);
    rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(begin),
                rows_.begin() + static_cast<std::ptrdiff_t>(end));
    endRemoveRows();
    end = begin;
  }
}

int QueueListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant QueueListModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const DiskNode& node = rows_[static_cast<std::size_t>(index.row())].node;
  switch (role) {
    case NameRole:
      return displayText(shownName(node));
    case SizeRole:
      return QString::fromStdString(Format::bytes(node.size()));
    case NodeRole:
      return QVariant::fromValue(NodeHandle(node));
    default:
      return {};
  }
}

QHash<int, QByteArray> QueueListModel::roleNames() const {
  return {{NameRole, "name"}, {SizeRole, "sizeText"}, {NodeRole, "node"}};
}

}  // namespace tessaly
