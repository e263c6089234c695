// The kinds of a folder's content, largest share first, for the bar under its name.
#pragma once

#include <vector>

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include "app/model/NodeHandle.h"
#include "scan/KindBreakdown.h"

namespace tessaly {

class KindBreakdownModel : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(tessaly::NodeHandle node READ node WRITE setNode NOTIFY nodeChanged)
  Q_PROPERTY(bool empty READ isEmpty NOTIFY nodeChanged)
  // All slices as text, for assistive tools.
  Q_PROPERTY(QString summary READ summary NOTIFY nodeChanged)

 public:
  enum Role {
    KindColorRole = Qt::UserRole + 1,
    WordRole,
    PercentTextRole,
  };

  using QAbstractListModel::QAbstractListModel;

  const NodeHandle& node() const { return node_; }
  void setNode(const NodeHandle& node);
  bool isEmpty() const { return slices_.empty(); }
  const std::vector<KindSlice>& slices() const { return slices_; }
  QString summary() const;

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

 signals:
  void nodeChanged();

 private:
  NodeHandle node_;
  std::vector<KindSlice> slices_;
};

}  // namespace tessaly
