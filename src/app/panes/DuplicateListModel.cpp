#include "app/panes/DuplicateListModel.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "app/model/DisplayText.h"
#include "app/model/RowNode.h"
#include "scan/Format.h"

namespace tessaly {

namespace {

constexpr std::size_t shownDigits = 10;

using Paths = std::unordered_set<std::string_view>;

// Whether `queued` has `path` or a folder above it.
bool isQueued(const std::unordered_set<std::string>& queued, const std::string& path) {
  if (queued.empty()) return false;
  std::string above = path;
  while (!above.empty()) {
    if (queued.contains(above)) return true;
    above.resize(above.rfind('/') == std::string::npos ? 0 : above.rfind('/'));
  }
  return queued.contains("/");
}

// The files that share their blocks with another file of the same group.
Paths pathsSharingBlocks(const std::vector<DuplicateGroup>& groups,
                         const std::vector<ShareGroup>& shares) {
  std::unordered_map<std::string_view, std::size_t> groupOf;
  if (!shares.empty()) {
    for (std::size_t group = 0; group < groups.size(); ++group) {
      for (const PathSize& file : groups[group].files) groupOf.emplace(file.path, group);
    }
  }
  Paths sharing;
  for (const ShareGroup& share : shares) {
    std::unordered_map<std::size_t, std::vector<std::string_view>> inGroup;
    for (const ShareRecord& file : share.files) {
      const auto found = groupOf.find(file.path);
      if (found != groupOf.end()) inGroup[found->second].push_back(file.path);
    }
    for (const auto& [group, paths] : inGroup) {
      if (paths.size() > 1) sharing.insert(paths.begin(), paths.end());
    }
  }
  return sharing;
}

QString bytesText(std::int64_t bytes) {
  return QString::fromStdString(Format::bytes(bytes));
}

}  // namespace

DuplicateListModel::DuplicateListModel(const Findings& findings, const CleanupQueue& queue,
                                       QObject* parent)
    : QAbstractListModel(parent), findings_(findings), queue_(queue) {
  connect(&findings_, &Findings::duplicatesChanged, this, &DuplicateListModel::follow);
  connect(&findings_, &Findings::cloneGroupsChanged, this, &DuplicateListModel::follow);
  connect(&queue_, &CleanupQueue::queueChanged, this, &DuplicateListModel::follow);
  follow();
}

void DuplicateListModel::follow() {
  const std::vector<DuplicateGroup>& groups = findings_.duplicates();
  const Paths sharing = pathsSharingBlocks(groups, findings_.cloneGroups());
  std::unordered_set<std::string> queued;
  for (const DiskNode& node : queue_.queue()) queued.insert(node.path());
  std::vector<Row> rows;
  for (const DuplicateGroup& group : groups) {
    const std::size_t first = rows.size();
    for (const PathSize& file : group.files)
      rows.push_back({.file = file, .sharesBlocks = sharing.contains(file.path)});
    if (rows.size() == first) continue;
    const bool noneKept =
        std::all_of(group.files.begin(), group.files.end(),
                    [&queued](const PathSize& file) { return isQueued(queued, file.path); });
    rows[first].heading = {.copies = group.files.size(),
                           .bytes = group.bytes,
                           .digest = group.digest.substr(0, shownDigits),
                           .noneKept = noneKept};
  }
  if (rows_.set(std::move(rows), [](const Row& row) { return row.file.path; })) emit countChanged();
}

int DuplicateListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_.count();
}

QVariant DuplicateListModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const Row& row = rows_.at(index.row());
  switch (role) {
    case GroupRole:
      return row.heading ? QStringLiteral("%1× %2").arg(QString::number(row.heading->copies),
                                                        bytesText(row.heading->bytes))
                         : QString();
    case DigestRole:
      return row.heading ? displayText(row.heading->digest) : QString();
    case NoneKeptRole:
      return row.heading && row.heading->noneKept;
    case NameRole:
      return displayText(row.file.name);
    case PlaceRole:
      return displayText(row.file.path);
    case SizeRole:
      return bytesText(row.file.size);
    case SameBlocksRole:
      return row.sharesBlocks;
    case NodeRole:
      return QVariant::fromValue(RowNode::ofFile(row.file));
    default:
      return {};
  }
}

QHash<int, QByteArray> DuplicateListModel::roleNames() const {
  return {{GroupRole, "groupText"},       {DigestRole, "digestText"},
          {NoneKeptRole, "noneKept"},     {NameRole, "name"},
          {PlaceRole, "place"},           {SizeRole, "sizeText"},
          {SameBlocksRole, "sameBlocks"}, {NodeRole, "node"}};
}

}  // namespace tessaly
