// The list of the largest files of the finished scan, largest first: its rows and actions.
#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include "app/model/NodeHandle.h"
#include "app/model/NodeRows.h"
#include "session/ScanSession.h"

namespace tessaly {

class LargestListState : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Created in C++.")
  Q_PROPERTY(tessaly::NodeRows* rows READ rows CONSTANT)

 public:
  // `session` must outlive it.
  explicit LargestListState(ScanSession& session, QObject* parent = nullptr);

  NodeRows* rows() { return &rows_; }

  // The actions do nothing for a handle without a node.
  Q_INVOKABLE void showOnMap(const tessaly::NodeHandle& node);
  Q_INVOKABLE void addToQueue(const tessaly::NodeHandle& node);

 private:
  void follow();

  ScanSession& session_;
  NodeRows rows_;
};

}  // namespace tessaly
