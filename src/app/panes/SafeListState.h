// The list of large unused files with their scores: its rows and actions.
#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include "app/model/NodeHandle.h"
#include "app/panes/SafeListModel.h"
#include "session/ScanSession.h"

namespace tessaly {

class SafeListState : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Created in C++.")
  Q_PROPERTY(tessaly::SafeListModel* rows READ rows CONSTANT)

 public:
  // `session` must outlive it.
  explicit SafeListState(ScanSession& session, QObject* parent = nullptr);

  SafeListModel* rows() { return &rows_; }

  // The actions do nothing for a handle without a node. A file that the tree lacks is shown in the
  // file manager instead.
  Q_INVOKABLE void showOnMap(const tessaly::NodeHandle& node);
  Q_INVOKABLE void addToQueue(const tessaly::NodeHandle& node);

 private:
  ScanSession& session_;
  SafeListModel rows_;
};

}  // namespace tessaly
