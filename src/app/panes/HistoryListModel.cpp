#include "app/panes/HistoryListModel.h"

#include <algorithm>
#include <utility>

#include "app/panes/HistoryTexts.h"
#include "scan/Format.h"

namespace tessaly {

HistoryListModel::HistoryListModel(const ScanResult& result, QObject* parent)
    : QAbstractListModel(parent), result_(result) {
  connect(&result_, &ScanResult::historyChanged, this, &HistoryListModel::follow);
  follow();
}

void HistoryListModel::follow() {
  std::int64_t scale = 1;
  for (const HistoryPoint& point : result_.history()) scale = std::max(scale, point.bytes);
  std::vector<Row> wanted;
  wanted.reserve(result_.history().size());
  for (const HistoryPoint& point : result_.history()) {
    wanted.push_back({.at = point.at,
                      .bytes = point.bytes,
                      .share = static_cast<double>(point.bytes) / static_cast<double>(scale)});
  }
  rows_.set(std::move(wanted), &Row::at);
}

int HistoryListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_.count();
}

QVariant HistoryListModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const Row& row = rows_.at(index.row());
  switch (role) {
    case TimeRole:
      return HistoryTexts::time(row.at);
    case SizeRole:
      return QString::fromStdString(Format::bytes(row.bytes));
    case ShareRole:
      return row.share;
    default:
      return {};
  }
}

QHash<int, QByteArray> HistoryListModel::roleNames() const {
  return {{TimeRole, "timeText"}, {SizeRole, "sizeText"}, {ShareRole, "share"}};
}

}  // namespace tessaly
