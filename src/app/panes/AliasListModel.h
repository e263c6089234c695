// The links whose targets do not exist, in the session's order, one row each. Follows the session.
#pragma once

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include "app/model/KeyedRows.h"
#include "reclaim/DeadLink.h"
#include "session/Findings.h"

namespace tessaly {

class AliasListModel : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Created in C++.")

 public:
  enum Role {
    NameRole = Qt::UserRole + 1,
    PlaceRole,   // its path as displayed text
    TargetRole,  // "→ " and where it points to; empty if that is unknown
    KindRole,    // "symlink" or "alias"
    LockRole,    // whether a program keeps it as a sign that it runs
    NodeRole,    // the link as a NodeHandle, without a size
  };

  // `findings` must outlive it.
  explicit AliasListModel(const Findings& findings, QObject* parent = nullptr);

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

 private:
  void follow();

  const Findings& findings_;
  KeyedRows<DeadLink> rows_{*this};
};

}  // namespace tessaly
