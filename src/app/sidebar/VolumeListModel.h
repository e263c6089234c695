// The mounted volumes in the session's order, one row each.
#pragma once

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include "app/model/KeyedRows.h"
#include "app/model/PathHandle.h"
#include "session/MachineState.h"
#include "system/VolumeMount.h"

namespace tessaly {

class VolumeListModel : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Created in C++.")
  Q_PROPERTY(int count READ count NOTIFY countChanged)

 public:
  enum Role {
    NameRole = Qt::UserRole + 1,
    PathRole,  // the mount point, as a PathHandle
  };

  // `machine` must outlive it.
  explicit VolumeListModel(const MachineState& machine, QObject* parent = nullptr);

  int count() const { return volumes_.count(); }

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

 signals:
  void countChanged();

 private:
  void follow();

  const MachineState& machine_;
  KeyedRows<VolumeMount> volumes_{*this};
};

}  // namespace tessaly
