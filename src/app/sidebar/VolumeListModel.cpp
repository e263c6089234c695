#include "app/sidebar/VolumeListModel.h"

#include "app/model/DisplayText.h"

namespace tessaly {

VolumeListModel::VolumeListModel(const MachineState& machine, QObject* parent)
    : QAbstractListModel(parent), machine_(machine) {
  connect(&machine_, &MachineState::volumesChanged, this, &VolumeListModel::follow);
  follow();
}

void VolumeListModel::follow() {
  if (volumes_.set(machine_.volumes(), &VolumeMount::path)) emit countChanged();
}

int VolumeListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : count();
}

QVariant VolumeListModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const VolumeMount& volume = volumes_.at(index.row());
  switch (role) {
    case NameRole:
      return displayText(volume.name);
    case PathRole:
      return QVariant::fromValue(PathHandle(volume.path));
    default:
      return {};
  }
}

QHash<int, QByteArray> VolumeListModel::roleNames() const {
  return {{NameRole, "name"}, {PathRole, "path"}};
}

}  // namespace tessaly
