// The way from the scanned folder down to the folder on screen, one row each. It follows the
// session's navigation stack.
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
  QML_UNCREATABLE("The program makes it and hands it to its view.")

 public:
  enum Role {
    NameRole = Qt::UserRole + 1,
    FirstRole,  // the scanned folder
    LastRole,   // the folder on screen
  };

  // What it is given outlives it.
  explicit BreadcrumbModel(Navigation& navigation, QObject* parent = nullptr);

  // Makes the folder of this row the one on screen.
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
