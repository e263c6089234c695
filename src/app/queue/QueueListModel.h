// What waits to be thrown away, a row each, in the session's order. It follows the session; rows
// that stay are kept, so that the list stays where it was scrolled to and the keyboard where it is.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include "app/model/NodeHandle.h"
#include "session/CleanupQueue.h"

namespace tessaly {

class QueueListModel : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("The program makes it and hands it to its view.")

 public:
  enum Role {
    NameRole = Qt::UserRole + 1,  // as a person reads it
    SizeRole,                     // in words
    NodeRole,                     // the node itself, as a NodeHandle
  };

  // What it is given outlives it.
  explicit QueueListModel(const CleanupQueue& queue, QObject* parent = nullptr);

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

 private:
  // No two queued nodes have the same path.
  struct Row {
    std::string path;
    DiskNode node;
  };

  void follow();
  void removeAllBut(const std::vector<Row>& wanted);
  static bool startsWith(const std::vector<Row>& rows, const std::vector<Row>& beginning);
  static bool isSame(const Row& a, const Row& b);

  const CleanupQueue& queue_;
  std::vector<Row> rows_;
};

}  // namespace tessaly
