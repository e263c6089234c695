// The commands of the main window, in the order of its menu. They act on the session's state when
// they are triggered, and are enabled and disabled as it changes.
//
// Main thread only. The session, the target and the actions must outlive it.
#pragma once

#include <functional>
#include <vector>

#include <QObject>
#include <QQmlListProperty>
#include <QtQml/qqmlregistration.h>

#include "app/commands/Command.h"
#include "app/commands/CommandTarget.h"
#include "app/model/NodeActions.h"
#include "session/ScanSession.h"

namespace tessaly {

class MenuCommands : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Created in C++.")
  Q_PROPERTY(QQmlListProperty<tessaly::Command> all READ list CONSTANT)

 public:
  struct Services {
    ScanSession& session;
    CommandTarget& target;  // of the commands on a single item
    NodeActions& actions;
    std::function<void()> quit;
  };

  explicit MenuCommands(Services services, QObject* parent = nullptr);

  const std::vector<Command*>& all() const { return all_; }
  Q_INVOKABLE void quit();

 private:
  using Condition = bool (*)(const ScanSession&);

  void add(const char* title, const QKeySequence& shortcut, Condition isAllowed,
           std::function<void()> act);
  void add(const char* title, const QKeySequence& shortcut, Condition isAllowed,
           void (ScanSession::*act)());
  void addAll();
  void refresh();
  QQmlListProperty<Command> list();

  Services services_;
  std::vector<Command*> all_;  // children of this
};

}  // namespace tessaly
