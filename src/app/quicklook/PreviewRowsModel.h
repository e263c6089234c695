// The rows of a preview as a model for a view.
#pragma once

#include <vector>

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include "app/quicklook/PreviewRow.h"

namespace tessaly {

class PreviewRowsModel : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Created in C++.")

 public:
  enum Role { SymbolRole = Qt::UserRole + 1, NameRole, ValueRole };

  using QAbstractListModel::QAbstractListModel;

  void setRows(std::vector<PreviewRow> rows);

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

 private:
  std::vector<PreviewRow> rows_;
};

}  // namespace tessaly
