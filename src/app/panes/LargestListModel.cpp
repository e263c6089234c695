#include "app/panes/LargestListModel.h"

#include <utility>
#include <vector>

#include "app/model/DisplayText.h"
#include "app/model/KindWord.h"
#include "scan/Format.h"
#include "scan/ShownName.h"

namespace tessaly {

LargestListModel::LargestListModel(const ScanResult& result, QObject* parent)
    : QAbstractListModel(parent), result_(result) {
  connect(&result_, &ScanResult::largestChanged, this, &LargestListModel::follow);
  follow();
}

void LargestListModel::follow() {
  std::vector<Row> wanted;
  wanted.reserve(result_.largest().size());
  for (const DiskNode& node : result_.largest()) wanted.push_back({node.path(), node});
  rows_.set(std::move(wanted), &Row::path);
}

int LargestListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_.count();
}

QVariant LargestListModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const auto& [path, node] = rows_.at(index.row());
  switch (role) {
    case NameRole:
      return displayText(shownName(node));
    case PlaceRole:
      return displayText(path);
    case KindRole: {
      const std::string_view word = KindWord::of(node.kind());
      return QString::fromUtf8(word.data(), static_cast<qsizetype>(word.size()));
    }
    case SizeRole:
      return QString::fromStdString(Format::bytes(node.size()));
    case NodeRole:
      return QVariant::fromValue(NodeHandle(node));
    default:
      return {};
  }
}

QHash<int, QByteArray> LargestListModel::roleNames() const {
  return {{NameRole, "name"},
          {PlaceRole, "place"},
          {KindRole, "kindText"},
          {SizeRole, "sizeText"},
          {NodeRole, "node"}};
}

}  // namespace tessaly
