// The ways of showing the tree that have a button, a row each in the order of the buttons. Two ways
// have none; they have a name all the same.
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
  QML_UNCREATABLE("The program makes it and hands it to its view.")

 public:
  enum Role {
    KeyRole = Qt::UserRole + 1,  // the mode's name in the program
    LabelRole,
    ActiveRole,       // it is the one in force
    StartsGroupRole,  // a rule stands before its button
  };

  // The mode's name in the program; empty for a mode without a button.
  static QString keyOf(VizMode mode);
  // What a person calls a mode; the same on its button and over its view.
  static QString labelOf(VizMode mode);

  // What it is given outlives it.
  explicit ModeListModel(Shown& shown, QObject* parent = nullptr);

  // Shows the tree in the way of this row.
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
