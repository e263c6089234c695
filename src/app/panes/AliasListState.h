// The list of links whose targets do not exist: its rows and actions.
#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include "app/model/NodeHandle.h"
#include "app/panes/AliasListModel.h"
#include "session/ScanSession.h"

namespace tessaly {

class AliasListState : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Created in C++.")
  Q_PROPERTY(tessaly::AliasListModel* rows READ rows CONSTANT)

 public:
  // `session` must outlive it.
  explicit AliasListState(ScanSession& session, QObject* parent = nullptr);

  AliasListModel* rows() { return &rows_; }

  // The actions do nothing for a handle without a node. A link that the tree lacks, as most of them
  // are, is shown in the file manager instead.
  Q_INVOKABLE void showOnMap(const tessaly::NodeHandle& node);
  Q_INVOKABLE void addToQueue(const tessaly::NodeHandle& node);

 private:
  ScanSession& session_;
  AliasListModel rows_;
};

}  // namespace tessaly
