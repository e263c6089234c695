#include "app/sidebar/PathListModel.h"

#include <functional>
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
  if (paths_.set(pathsOfSession(), std::identity())) emit countChanged();
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
  const std::string& path = paths_.at(index.row());
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
