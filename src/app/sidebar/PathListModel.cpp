#include "app/sidebar/PathListModel.h"

#include <algorithm>
#include <cstddef>
#include <unordered_map>

#include "app/model/DisplayText.h"
#include "scan/PathName.h"

namespace tessaly {

void PathListModel::setSession(ScanSession* session) {
  if (session == session_) return;
  if (session_ != nullptr) session_->disconnect(this);
  session_ = session;
  if (session_ != nullptr) {
    for (const auto changed :
         {&ScanSession::pinsChanged, &ScanSession::recentsChanged, &ScanSession::excludesChanged})
      connect(session_, changed, this, &PathListModel::follow);
  }
  emit sessionChanged();
  follow();
}

void PathListModel::setList(List list) {
  if (list == list_) return;
  list_ = list;
  emit listChanged();
  follow();
}

std::vector<std::string> PathListModel::pathsOfSession() const {
  if (session_ == nullptr) return {};
  switch (list_) {
    case Pins:
      return session_->pins();
    case Recents:
      return session_->recents();
    case Excludes:
      break;
  }
  return session_->excludes();
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
    if (path == "/") return QStringLiteral("Macintosh HD");
    if (path == session_->homeDirectory()) return QStringLiteral("Home");
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
