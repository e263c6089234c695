// The lines of a text as a model for a view.
#pragma once

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include "app/quicklook/TextLines.h"

namespace tessaly {

class TextLinesModel : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Created in C++.")

 public:
  enum Role { LineRole = Qt::UserRole + 1 };

  using QAbstractListModel::QAbstractListModel;

  void setLines(TextLines lines);

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

 private:
  TextLines lines_;
};

}  // namespace tessaly
