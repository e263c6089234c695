// The items of the cleanup queue in the session's order, one row each. Follows the session.
#pragma once

#include <string>

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include "app/model/KeyedRows.h"
#include "app/model/NodeHandle.h"
#include "session/CleanupQueue.h"

namespace tessaly {

class QueueListModel : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("The program makes it and hands it to its view.")

 public:
  enum Role {
    NameRole = Qt::UserRole + 1,  // as displayed text
    SizeRole,                     // as text
    NodeRole,                     // the node itself, as a NodeHandle
  };

  // `queue` must outlive it.
  explicit QueueListModel(const CleanupQueue& queue, QObject* parent = nullptr);

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

 private:
  struct Row {
    std::string path;
    DiskNode node;

    friend bool operator==(const Row& a, const Row& b) {
      return a.path == b.path && a.node.size() == b.node.size();
    }
  };

  void follow();

  const CleanupQueue& queue_;
  KeyedRows<Row> rows_{*this};
};

}  // namespace tessaly
