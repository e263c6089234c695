// What has grown since the scan of the same root before, a row each, in the session's order. It
// follows the session.
#pragma once

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include "app/model/KeyedRows.h"
#include "app/model/PathHandle.h"
#include "scan/ScanDelta.h"
#include "session/ScanResult.h"

namespace tessaly {

class GrewListModel : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("The program makes it and hands it to its view.")

 public:
  enum Role {
    NameRole = Qt::UserRole + 1,
    PlaceRole,   // its path, to show
    GrowthRole,  // in words, "+1.0 GB"
    SizeRole,    // of now, in words
    PathRole,    // the item itself, as a PathHandle
  };

  // What it is given outlives it.
  explicit GrewListModel(const ScanResult& result, QObject* parent = nullptr);

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

 signals:
  void countChanged();

 private:
  void follow();

  const ScanResult& result_;
  KeyedRows<ScanDelta> rows_{*this};
};

}  // namespace tessaly
