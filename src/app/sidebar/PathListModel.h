// One of the session's lists of folders in its order, one row each. Follows the session.
#pragma once

#include <string>
#include <vector>

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include "app/model/KeyedRows.h"
#include "app/model/PathHandle.h"
#include "session/Choices.h"

namespace tessaly {

class PathListModel : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Created in C++.")
  Q_PROPERTY(List list READ list CONSTANT)
  Q_PROPERTY(int count READ count NOTIFY countChanged)

 public:
  enum List { Pins, Recents, Excludes };
  Q_ENUM(List)

  enum Role {
    NameRole = Qt::UserRole + 1,  // the displayed name of the folder
    PlaceRole,                    // the full path as displayed text
    PathRole,                     // the path's bytes, as a PathHandle
  };

  // `choices` must outlive it.
  explicit PathListModel(const Choices& choices, List list, std::string homeDirectory,
                         QObject* parent = nullptr);

  List list() const { return list_; }
  int count() const { return paths_.count(); }

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

 signals:
  void countChanged();

 private:
  std::vector<std::string> pathsOfSession() const;
  QString nameOf(const std::string& path) const;
  void follow();

  const Choices& choices_;
  const List list_;
  const std::string homeDirectory_;
  KeyedRows<std::string> paths_{*this};
};

}  // namespace tessaly
