// The items in which two folders differ, in the session's order, one row each. Follows the session.
#pragma once

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include "app/model/KeyedRows.h"
#include "scan/FolderCompareRow.h"
#include "session/Comparison.h"

namespace tessaly {

class CompareListModel : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Created in C++.")

 public:
  enum Role {
    PlaceRole = Qt::UserRole + 1,  // the path below both folders as displayed text
    LeftRole,                      // sizes as texts
    RightRole,
    DifferenceRole,  // from left to right, as text with its sign
    ShrinksRole,     // whether the right one is smaller
  };

  // `comparison` must outlive it.
  explicit CompareListModel(const Comparison& comparison, QObject* parent = nullptr);

  // From left to right: "+60 B", "−60 B" with a minus sign, or "+0 B".
  static QString differenceText(const FolderCompareRow& row);
  static bool shrinks(const FolderCompareRow& row);

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

 signals:
  void countChanged();

 private:
  void follow();

  const Comparison& comparison_;
  KeyedRows<FolderCompareRow> rows_{*this};
};

}  // namespace tessaly
