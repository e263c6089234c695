// The state of a tile's menu. It keeps the node itself, so that an entry acts on the clicked item,
// whatever the map shows by then.
#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include "app/model/NodeHandle.h"
#include "session/ScanSession.h"

namespace tessaly {

class TileMenuState : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Created in C++.")
  Q_PROPERTY(tessaly::NodeHandle node READ node WRITE setNode NOTIFY nodeChanged)
  // Whether the node has children to show.
  Q_PROPERTY(bool canOpenFolder READ canOpenFolder NOTIFY nodeChanged)
  // False while a batch moves to the Trash.
  Q_PROPERTY(bool canTrash READ canTrash NOTIFY canTrashChanged)

 public:
  // The session must outlive it.
  explicit TileMenuState(ScanSession& session, QObject* parent = nullptr);

  NodeHandle node() const { return node_; }
  void setNode(const NodeHandle& node);
  bool canOpenFolder() const;
  bool canTrash() const { return !session_.removal().isMoving(); }

  // Both do nothing without a node.
  Q_INVOKABLE void addToQueue();
  Q_INVOKABLE void zipThenTrash();

 signals:
  void nodeChanged();
  void canTrashChanged();

 private:
  ScanSession& session_;
  NodeHandle node_;
};

}  // namespace tessaly
