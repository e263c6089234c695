#include "app/queue/QueueListModel.h"

#include <utility>
#include <vector>

#include "app/model/DisplayText.h"
#include "scan/Format.h"
#include "scan/ShownName.h"

namespace tessaly {

QueueListModel::QueueListModel(const CleanupQueue& queue, QObject* parent)
    : QAbstractListModel(parent), queue_(queue) {
  connect(&queue_, &CleanupQueue::queueChanged, this, &QueueListModel::follow);
  follow();
}

void QueueListModel::follow() {
  std::vector<Row> wanted;
  wanted.reserve(queue_.queue().size());
  for (const DiskNode& node : queue_.queue()) wanted.push_back({node.path(), node});
  rows_.set(std::move(wanted), &Row::path);
}

int QueueListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_.count();
}

QVariant QueueListModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const DiskNode& node = rows_.at(index.row()).node;
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
