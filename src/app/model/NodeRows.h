// A list of files and folders as rows: one per node, in their order, identified by their paths.
// Which nodes these are, its owner decides.
//
// Main thread only.
#pragma once

#include <string>
#include <vector>

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include "app/model/KeyedRows.h"
#include "app/model/NodeHandle.h"

namespace tessaly {

class NodeRows : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Created in C++.")

 public:
  enum Role {
    NameRole = Qt::UserRole + 1,  // the displayed name
    PlaceRole,                    // the path as displayed text
    KindRole,                     // the name of the kind
    SizeRole,                     // as text
    NodeRole,                     // the node itself, as a NodeHandle
  };

  using QAbstractListModel::QAbstractListModel;

  // Replaces the rows by those of `nodes`. A row whose node has the same path, kind and size as
  // before is unchanged, and keeps its node.
  void set(const std::vector<DiskNode>& nodes);

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

 private:
  struct Row {
    std::string path;  // a node makes its own on each call
    DiskNode node;

    // By what a row shows. Two subtrees would be compared node by node.
    friend bool operator==(const Row& a, const Row& b) {
      return a.path == b.path && a.node.kind() == b.node.kind() && a.node.size() == b.node.size();
    }
  };

  KeyedRows<Row> rows_{*this};
};

}  // namespace tessaly
