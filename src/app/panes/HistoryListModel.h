// The finished scans of the scanned folder, oldest first, one row each. Follows the session.
#pragma once

#include <cstdint>
#include <vector>

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include "app/model/KeyedRows.h"
#include "session/ScanResult.h"

namespace tessaly {

class HistoryListModel : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Created in C++.")

 public:
  enum Role {
    TimeRole = Qt::UserRole + 1,  // as text
    SizeRole,                     // as text
    ShareRole,                    // its part of the largest size, 0 to 1
  };

  // `result` must outlive it.
  explicit HistoryListModel(const ScanResult& result, QObject* parent = nullptr);

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

 private:
  struct Row {
    double at = 0;
    std::int64_t bytes = 0;
    double share = 0;

    friend bool operator==(const Row&, const Row&) = default;
  };

  void follow();

  const ScanResult& result_;
  KeyedRows<Row> rows_{*this};
};

}  // namespace tessaly
