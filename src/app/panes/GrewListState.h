// The list of items that have grown: its title, rows and actions.
#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "app/model/PathHandle.h"
#include "app/panes/GrewListModel.h"
#include "session/ScanSession.h"

namespace tessaly {

class GrewListState : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Created in C++.")
  Q_PROPERTY(tessaly::GrewListModel* rows READ rows CONSTANT)
  Q_PROPERTY(QString title READ title NOTIFY titleChanged)

 public:
  // `session` must outlive it.
  explicit GrewListState(ScanSession& session, QObject* parent = nullptr);

  GrewListModel* rows() { return &rows_; }
  QString title() const;

  // Does nothing for a handle without a path.
  Q_INVOKABLE void showOnMap(const tessaly::PathHandle& path);

 signals:
  void titleChanged();

 private:
  ScanSession& session_;
  GrewListModel rows_;
};

}  // namespace tessaly
