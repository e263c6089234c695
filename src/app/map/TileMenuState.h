// What the menu of a tile is about. It holds the node itself, so that what is chosen is done to
// what was clicked, whatever the map shows by then.
#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include "app/model/NodeHandle.h"
#include "session/ScanSession.h"

namespace tessaly {

class TileMenuState : public QObject {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(tessaly::ScanSession* session MEMBER session_ NOTIFY sessionChanged REQUIRED)
  Q_PROPERTY(tessaly::NodeHandle node READ node WRITE setNode NOTIFY nodeChanged)
  // Whether there is anything to see inside.
  Q_PROPERTY(bool canOpenFolder READ canOpenFolder NOTIFY nodeChanged)

 public:
  using QObject::QObject;

  NodeHandle node() const { return node_; }
  void setNode(const NodeHandle& node);
  bool canOpenFolder() const;

  // Both do nothing before there is a node.
  Q_INVOKABLE void addToQueue();
  Q_INVOKABLE void zipThenTrash();

 signals:
  void sessionChanged();
  void nodeChanged();

 private:
  ScanSession* session_ = nullptr;
  NodeHandle node_;
};

}  // namespace tessaly
