// The modes of showing the tree that have a button, in the order of the buttons, one row each. Two
// modes have no button.
#pragma once

#include <optional>

#include <QAbstractListModel>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "session/Shown.h"

namespace tessaly {

class ModeListModel : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Created in C++.")

 public:
  enum Role {
    KeyRole = Qt::UserRole + 1,  // identifies the mode in code
    LabelRole,
    ActiveRole,       // this is the current mode
    StartsGroupRole,  // a separator precedes its button
  };

  // Identifies the mode in code, whether it has a button or not.
  static QString keyOf(VizMode mode);

  // `shown` must outlive it.
  explicit ModeListModel(Shown& shown, QObject* parent = nullptr);

  // Sets the mode of this row; does nothing for any other row number.
  Q_INVOKABLE void choose(int row);

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

 private:
  void takeMode();

  Shown& shown_;
  std::optional<VizMode> mode_;
};

}  // namespace tessaly
