// The large unused files of the latest analysis with their scores, in the session's order, one row
// each. Follows the session.
#pragma once

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include "app/model/KeyedRows.h"
#include "app/model/NodeHandle.h"
#include "reclaim/SafeItem.h"
#include "session/Findings.h"

namespace tessaly {

class SafeListModel : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Created in C++.")

 public:
  enum Role {
    NameRole = Qt::UserRole + 1,
    PlaceRole,    // its path as displayed text
    ScoreRole,    // as text, "100"
    CautionRole,  // whether the score warns of removing it
    VerdictRole,  // label and reasons, "Review · idle 6+ months"
    SizeRole,     // as text
    NodeRole,     // the file as a NodeHandle, although the tree may lack it
  };

  // `findings` must outlive it.
  explicit SafeListModel(const Findings& findings, QObject* parent = nullptr);

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

 private:
  void follow();

  const Findings& findings_;
  KeyedRows<SafeItem> rows_{*this};
};

}  // namespace tessaly
