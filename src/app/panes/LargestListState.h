// The list of the largest files: its rows and actions.
#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include "app/model/NodeHandle.h"
#include "app/panes/LargestListModel.h"
#include "session/ScanSession.h"

namespace tessaly {

class LargestListState : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("The program makes it and hands it to its view.")
  Q_PROPERTY(tessaly::LargestListModel* rows READ rows CONSTANT)

 public:
  // `session` must outlive it.
  explicit LargestListState(ScanSession& session, QObject* parent = nullptr);

  LargestListModel* rows() { return &rows_; }

  // The actions do nothing for a handle without a node.
  Q_INVOKABLE void showOnMap(const tessaly::NodeHandle& node);
  Q_INVOKABLE void addToQueue(const tessaly::NodeHandle& node);

 private:
  ScanSession& session_;
  LargestListModel rows_;
};

}  // namespace tessaly
