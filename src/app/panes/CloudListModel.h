// The items in the cloud without a copy on this disk, in the session's order, one row each. Follows
// the session.
#pragma once

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include "app/model/KeyedRows.h"
#include "reclaim/CloudItem.h"
#include "session/Findings.h"

namespace tessaly {

class CloudListModel : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Created in C++.")

 public:
  enum Role {
    NameRole = Qt::UserRole + 1,
    PlaceRole,  // its path as displayed text
    SizeRole,   // as text
    NodeRole,   // the item as a NodeHandle, although the tree may lack it
  };

  // `findings` must outlive it.
  explicit CloudListModel(const Findings& findings, QObject* parent = nullptr);

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

 private:
  void follow();

  const Findings& findings_;
  KeyedRows<CloudItem> rows_{*this};
};

}  // namespace tessaly
