// The session's bloat filters in the order of the catalogue, one row each.
#pragma once

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include "app/model/KeyedRows.h"
#include "session/Choices.h"
#include "treemap/BloatFilter.h"

namespace tessaly {

class FilterListModel : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Created in C++.")

 public:
  enum Role {
    FilterIdRole = Qt::UserRole + 1,
    NameRole,
    SymbolNameRole,
    HighlightedRole,  // the map highlights its tiles
    SkippedRole,      // the next scan leaves out its items
  };

  // `choices` must outlive it.
  explicit FilterListModel(const Choices& choices, QObject* parent = nullptr);

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

 private:
  void follow();

  const Choices& choices_;
  KeyedRows<BloatFilter> filters_{*this};
};

}  // namespace tessaly
