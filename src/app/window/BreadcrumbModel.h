// The folders from the scanned one to the one on screen, one row each. Follows the session's
// navigation stack.
#pragma once

#include <string>

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include "app/model/KeyedRows.h"
#include "session/Navigation.h"

namespace tessaly {

class BreadcrumbModel : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Created in C++.")

 public:
  enum Role {
    NameRole = Qt::UserRole + 1,
    FirstRole,  // the scanned folder
    LastRole,   // the folder on screen
  };

  // `navigation` must outlive it.
  explicit BreadcrumbModel(Navigation& navigation, QObject* parent = nullptr);

  // Shows the folder of this row.
  Q_INVOKABLE void jump(int row);

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

 private:
  struct Crumb {
    std::string path;
    std::string name;
    bool isFirst = false;
    bool isLast = false;

    friend bool operator==(const Crumb&, const Crumb&) = default;
  };

  void follow();

  Navigation& navigation_;
  KeyedRows<Crumb> crumbs_{*this};
};

}  // namespace tessaly
