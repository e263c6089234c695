#include "app/sidebar/PathListModel.h"

#include <algorithm>
#include <cstddef>
#include <unordered_map>
#include <utility>

#include "app/model/DisplayText.h"
#include "look/Wording.h"
#include "scan/PathName.h"

namespace tessaly {

PathListModel::PathListModel(const Choices& choices, List list, std::string homeDirectory,
                             QObject* parent)
    : QAbstractListModel(parent),
      choices_(choices),
      list_(list),
      homeDirectory_(std::move(homeDirectory)) {
  for (const auto changed :
       {&Choices::pinsChanged, &Choices::recentsChanged, &Choices::excludesChanged})
    connect(&choices_, changed, this, &PathListModel::follow);
  follow();
}

std::vector<std::string> PathListModel::pathsOfSession() const {
  switch (list_) {
    case Pins:
      return choices_.pins();
    case Recents:
      return choices_.recents();
    case Excludes:
      break;
  }
  return choices_.excludes();
}

void PathListModel::follow() {
  const std::vector<std::string> wanted = pathsOfSession();
  if (wanted == paths_) return;
  const std::size_t before = paths_.size();
  removeAllBut(wanted);
  for (std::size_t row = 0; row < wanted.size(); ++row) {
    const auto here = paths_.begin() + static_cast<std::ptrdiff_t>(row);
    const auto there = std::find(here, paths_.end(), wanted[row]);
    if (there == here && here != paths_.end()) continue;
    const int to = static_cast<int>(row);
    if (there == paths_.end()) {
      beginInsertRows({}, to, to);
      paths_.insert(here, wanted[row]);
      endInsertRows();
    } else {
      const int from = static_cast<int>(there - paths_.begin());
      beginMoveRows({}, from, from, {}, to);
      std::rotate(here, there, there + 1);
      endMoveRows();
    }
  }
  if (paths_.size() != before) emit countChanged();
}

void PathListModel::removeAllBut(const std::vector<std::string>& wanted) {
  std::unordered_map<std::string, int> left;
  for (const std::string& path : wanted) ++left[path];
  for (std::size_t row = 0; row < paths_.size();) {
    if (--left[paths_[row]] >= 0) {
      ++row;
      continue;
    }
    beginRemoveRows({}, static_cast<int>(row), static_cast<int>(row));
    paths_.erase(paths_.begin() + static_cast<std::ptrdiff_t>(row));
    endRemoveRows();
  }
}

QString PathListModel::nameOf(const std::string& path) const {
  if (list_ != Excludes) {
    if (path == "/") return displayText(Wording::current().startupDisk);
    if (path == homeDirectory_) return QStringLiteral("Home");
  }
  return displayText(lastPathComponent(path));
}

int PathListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : count();
}

QVariant PathListModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const std::string& path = paths_[static_cast<std::size_t>(index.row())];
  switch (role) {
    case NameRole:
      return nameOf(path);
    case PlaceRole:
      return displayText(path);
    case PathRole:
      return QVariant::fromValue(PathHandle(path));
    default:
      return {};
  }
}

QHash<int, QByteArray> PathListModel::roleNames() const {
  return {{NameRole, "name"}, {PlaceRole, "place"}, {PathRole, "path"}};
}

}  // namespace tessaly
