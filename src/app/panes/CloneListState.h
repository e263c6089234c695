// The list of files that share blocks of the disk: its rows, and its one action. It removes
// nothing.
#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include "app/model/NodeHandle.h"
#include "app/panes/CloneListModel.h"
#include "session/ScanSession.h"

namespace tessaly {

class CloneListState : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Created in C++.")
  Q_PROPERTY(tessaly::CloneListModel* rows READ rows CONSTANT)

 public:
  // `session` must outlive it.
  explicit CloneListState(ScanSession& session, QObject* parent = nullptr);

  CloneListModel* rows() { return &rows_; }

  // Does nothing for a handle without a node. A file that the tree lacks is shown in the file
  // manager instead.
  Q_INVOKABLE void showOnMap(const tessaly::NodeHandle& node);

 private:
  ScanSession& session_;
  CloneListModel rows_;
};

}  // namespace tessaly
