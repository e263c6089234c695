// The item that the commands on a single item act on. While the map is shown, it is the session's
// focused item; while a list is shown in its place, it is that of the list's row with the keyboard
// focus (model/CommandRow). So a command never acts on an item of the hidden map. Without such a
// row there is none: before the keyboard enters the list, and in a mode without rows of files.
//
// A row keeps the commands while a menu in front of it has the keyboard focus.
//
// Main thread only.
#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QQuickWindow>

#include "app/model/CommandRow.h"
#include "app/model/NodeHandle.h"
#include "session/ScanSession.h"

namespace tessaly {

class CommandTarget : public QObject {
  Q_OBJECT

 public:
  // `session` must outlive it.
  explicit CommandTarget(ScanSession& session, QObject* parent = nullptr);

  // Follows the keyboard focus of the window with the lists.
  void follow(QQuickWindow& window);

  // Without a node if there is no item.
  NodeHandle node() const;

  // Each does nothing without an item, or with a remainder. The first two do nothing either with a
  // row that is not removable.
  void addToQueue();
  // As ScanSession::trashFocused(). On the map, the folder on screen is moved if no item has the
  // focus.
  void moveToTrash();
  // The paths of the selected items take precedence.
  void copyPath();

 signals:
  void changed();

 private:
  bool isOnMap() const;
  // That of the row with the keyboard focus; null if there is none.
  const CommandRow* offer() const;
  bool mayRemove() const;
  void takeFocus();
  void takeRow(QQuickItem* row);

  ScanSession& session_;
  QPointer<QQuickWindow> window_;
  QPointer<QQuickItem> row_;
};

}  // namespace tessaly
