// What waits to be thrown away, a row each, in the session's order. It follows the session; rows
// that stay are kept, so that the list stays where it was scrolled to and the keyboard where it is.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include "app/model/NodeHandle.h"
#include "session/ScanSession.h"

namespace tessaly {

class QueueListModel : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(
      tessaly::ScanSession* session READ session WRITE setSession NOTIFY sessionChanged REQUIRED)

 public:
  enum Role {
    NameRole = Qt::UserRole + 1,  // as a person reads it
    SizeRole,                     // in words
    NodeRole,                     // the node itself, as a NodeHandle
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
  // No two queued nodes have the same path.
  struct Row {
    std::string path;
    DiskNode node;
  };

  void follow();
  void removeAllBut(const std::vector<Row>& wanted);
  static bool startsWith(const std::vector<Row>& rows, const std::vector<Row>& beginning);
  static bool isSame(const Row& a, const Row& b);

  ScanSession* session_ = nullptr;
  std::vector<Row> rows_;
};

}  // namespace tessaly
