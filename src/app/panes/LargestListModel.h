// The largest files of the finished scan, largest first, one row each. Follows the session.
#pragma once

#include <string>

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include "app/model/KeyedRows.h"
#include "app/model/NodeHandle.h"
#include "session/ScanResult.h"

namespace tessaly {

class LargestListModel : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("The program makes it and hands it to its view.")

 public:
  enum Role {
    NameRole = Qt::UserRole + 1,
    PlaceRole,  // its path as displayed text
    KindRole,   // the name of its kind
    SizeRole,   // as text
    NodeRole,   // the file, as a NodeHandle
  };

  // `result` must outlive it.
  explicit LargestListModel(const ScanResult& result, QObject* parent = nullptr);

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

 private:
  struct Row {
    std::string path;
    DiskNode node;

    friend bool operator==(const Row&, const Row&) = default;
  };

  void follow();

  const ScanResult& result_;
  KeyedRows<Row> rows_{*this};
};

}  // namespace tessaly
