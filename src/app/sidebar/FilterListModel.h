// The session's bloat filters, a row each, in the order of the catalogue.
#pragma once

#include <vector>

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include "session/ScanSession.h"
#include "treemap/BloatFilter.h"

namespace tessaly {

class FilterListModel : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(
      tessaly::ScanSession* session READ session WRITE setSession NOTIFY sessionChanged REQUIRED)

 public:
  enum Role {
    FilterIdRole = Qt::UserRole + 1,
    NameRole,
    SymbolNameRole,
    HighlightedRole,  // its tiles are lit on the map
    SkippedRole,      // the next scan leaves out what matches
  };

  using QAbstractListModel::QAbstractListModel;

  ScanSession* session() const { return session_; }
  void setSession(ScanSession* session);

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

 signals:
  void sessionChanged();

 private:
  void follow();

  ScanSession* session_ = nullptr;
  std::vector<BloatFilter> filters_;
};

}  // namespace tessaly
