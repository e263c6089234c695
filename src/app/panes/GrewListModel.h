// The items that have grown since the previous scan of the same root, in the session's order, one
// row each. Follows the session.
#pragma once

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include "app/model/KeyedRows.h"
#include "app/model/PathHandle.h"
#include "scan/ScanDelta.h"
#include "session/Navigation.h"
#include "session/ScanResult.h"

namespace tessaly {

class GrewListModel : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Created in C++.")

 public:
  enum Role {
    NameRole = Qt::UserRole + 1,
    PlaceRole,   // its path as displayed text
    GrowthRole,  // as text, "+1.0 GB"
    SizeRole,    // current size as text
    PathRole,    // the path's bytes, as a PathHandle
    NodeRole,    // the item, as a NodeHandle
  };

  // `result` and `navigation` must outlive it.
  GrewListModel(const ScanResult& result, const Navigation& navigation, QObject* parent = nullptr);

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

 signals:
  void countChanged();

 private:
  void follow();

  const ScanResult& result_;
  const Navigation& navigation_;
  KeyedRows<ScanDelta> rows_{*this};
};

}  // namespace tessaly
