// The mounted volumes, a row each, as the session lists them.
#pragma once

#include <vector>

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include "app/model/PathHandle.h"
#include "session/ScanSession.h"
#include "system/VolumeMount.h"

namespace tessaly {

class VolumeListModel : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(
      tessaly::ScanSession* session READ session WRITE setSession NOTIFY sessionChanged REQUIRED)
  Q_PROPERTY(int count READ count NOTIFY countChanged)

 public:
  enum Role {
    NameRole = Qt::UserRole + 1,
    PathRole,  // where it is mounted, as a PathHandle
  };

  using QAbstractListModel::QAbstractListModel;

  ScanSession* session() const { return session_; }
  void setSession(ScanSession* session);
  int count() const { return static_cast<int>(volumes_.size()); }

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

 signals:
  void sessionChanged();
  void countChanged();

 private:
  void follow();

  ScanSession* session_ = nullptr;
  std::vector<VolumeMount> volumes_;
};

}  // namespace tessaly
