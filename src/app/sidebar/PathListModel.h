// One of the session's lists of folders, a row each, in its order. It follows the session; rows
// that stay are kept, so that views keep what belongs to them, the keyboard above all.
#pragma once

#include <string>
#include <vector>

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include "app/model/PathHandle.h"
#include "session/ScanSession.h"

namespace tessaly {

class PathListModel : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(
      tessaly::ScanSession* session READ session WRITE setSession NOTIFY sessionChanged REQUIRED)
  Q_PROPERTY(List list READ list WRITE setList NOTIFY listChanged REQUIRED)
  Q_PROPERTY(int count READ count NOTIFY countChanged)

 public:
  enum List { Pins, Recents, Excludes };
  Q_ENUM(List)

  enum Role {
    NameRole = Qt::UserRole + 1,  // what a person calls the folder
    PlaceRole,                    // all of its path, to show
    PathRole,                     // the folder itself, as a PathHandle
  };

  using QAbstractListModel::QAbstractListModel;

  ScanSession* session() const { return session_; }
  void setSession(ScanSession* session);
  List list() const { return list_; }
  void setList(List list);
  int count() const { return static_cast<int>(paths_.size()); }

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

 signals:
  void sessionChanged();
  void listChanged();
  void countChanged();

 private:
  std::vector<std::string> pathsOfSession() const;
  QString nameOf(const std::string& path) const;
  void follow();
  void removeAllBut(const std::vector<std::string>& wanted);

  ScanSession* session_ = nullptr;
  List list_ = Pins;
  std::vector<std::string> paths_;
};

}  // namespace tessaly
