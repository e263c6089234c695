// Marks an item of QML as a row of a list that is shown in place of the map, and offers the row's
// file or folder to the commands of the window (commands/CommandTarget): Quick Look, also by Space,
// Queue Focused Item, Copy Path, and Move Focused to Trash.
//
// A list joins by one line in the delegate of its rows,
//
//     CommandRow.node: row.node
//
// with the row's `nodeHandle`; a model that has only a path makes it by RowNode::of(). The commands
// act on a row while it, or an item in it such as a button, has the keyboard focus. Rows without
// this line, and rows whose handle has no node, offer nothing.
//
// In a list that must not remove anything, `CommandRow.removable: false` keeps the two commands
// that queue an item or move it to the Trash from the row; the others still act on it.
#pragma once

#include <QObject>
#include <QtQml/qqml.h>
#include <QtQml/qqmlregistration.h>

#include "app/model/NodeHandle.h"

namespace tessaly {

class CommandRow : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("It exists only attached to an item.")
  // Qualified for qmllint.
  QML_ATTACHED(tessaly::CommandRow)
  Q_PROPERTY(tessaly::NodeHandle node READ node WRITE setNode NOTIFY nodeChanged)
  Q_PROPERTY(bool removable READ isRemovable WRITE setRemovable NOTIFY removableChanged)

 public:
  using QObject::QObject;

  static CommandRow* qmlAttachedProperties(QObject* row) { return new CommandRow(row); }

  // That of `row`; null if it has none.
  static CommandRow* of(QObject* row) {
    return qobject_cast<CommandRow*>(qmlAttachedPropertiesObject<CommandRow>(row, false));
  }

  const NodeHandle& node() const { return node_; }
  void setNode(const NodeHandle& node) {
    node_ = node;
    emit nodeChanged();
  }
  bool isRemovable() const { return isRemovable_; }
  void setRemovable(bool removable) {
    isRemovable_ = removable;
    emit removableChanged();
  }

 signals:
  void nodeChanged();
  void removableChanged();

 private:
  NodeHandle node_;
  bool isRemovable_ = true;
};

}  // namespace tessaly
