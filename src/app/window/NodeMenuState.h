// The menu of an item of the map.
#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "app/model/NodeHandle.h"
#include "session/ScanSession.h"

namespace tessaly {

class NodeMenuState : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Created in C++.")
  Q_PROPERTY(bool shown READ isShown NOTIFY changed)
  Q_PROPERTY(QString title READ title NOTIFY changed)
  Q_PROPERTY(tessaly::NodeHandle node READ node NOTIFY changed)
  // False while a batch moves to the Trash.
  Q_PROPERTY(bool canTrash READ canTrash NOTIFY canTrashChanged)

 public:
  // `session` must outlive it.
  explicit NodeMenuState(ScanSession& session, QObject* parent = nullptr);

  bool isShown() const;
  QString title() const;
  NodeHandle node() const;
  bool canTrash() const { return !session_.removal().isMoving(); }

  Q_INVOKABLE void dismiss();
  // These take the menu's node; a handle without a node does nothing.
  Q_INVOKABLE void addToQueue(const tessaly::NodeHandle& node);
  Q_INVOKABLE void trash(const tessaly::NodeHandle& node);

 signals:
  void changed();
  void canTrashChanged();

 private:
  ScanSession& session_;
};

}  // namespace tessaly
