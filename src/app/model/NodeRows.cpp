#include "app/model/NodeRows.h"

#include <string_view>
#include <utility>

#include "app/model/DisplayText.h"
#include "app/model/KindWord.h"
#include "scan/Format.h"
#include "scan/ShownName.h"

namespace tessaly {

void NodeRows::set(const std::vector<DiskNode>& nodes) {
  std::vector<Row> wanted;
  wanted.reserve(nodes.size());
  for (const DiskNode& node : nodes) wanted.push_back({node.path(), node});
  rows_.set(std::move(wanted), &Row::path);
}

int NodeRows::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_.count();
}

QVariant NodeRows::data(const QModelIndex& index, int role) const {
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

QHash<int, QByteArray> NodeRows::roleNames() const {
  return {{NameRole, "name"},
          {PlaceRole, "place"},
          {KindRole, "kindText"},
          {SizeRole, "sizeText"},
          {NodeRole, "node"}};
}

}  // namespace tessaly
