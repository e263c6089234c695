// The session bus without waiting: what is said here goes out in the order in which it was said, on
// a connection that is opened on a worker thread when it is first needed. A bus that hangs, and a
// service that must first be started or never answers, hold up nobody.
//
// Main thread only. Destroying it forgets what is still waiting, and the answers still to come.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>

#include "platform/Dispatch.h"

namespace tessaly {

class SessionBus {
 public:
  // Called on a worker thread, and may take its time.
  using Connect = std::function<QDBusConnection()>;
  // Gets the reply, or an error message.
  using Answer = std::function<void(const QDBusMessage&)>;
  using Use = std::function<void(QDBusConnection& bus)>;

  static QDBusConnection connectToReal() { return QDBusConnection::sessionBus(); }

  SessionBus(Dispatch& dispatch, Connect connect);
  SessionBus(const SessionBus&) = delete;
  SessionBus& operator=(const SessionBus&) = delete;

  // Calls a method. `answer` runs later, on the main thread, once and in every case: without a bus
  // it gets an error.
  void call(const QDBusMessage& method, Answer answer);

  // Sends a signal. Without a bus it is lost.
  void emitSignal(const QDBusMessage& signal);

  // Runs `use` on the main thread as soon as the bus is open, which may be at once. Without a bus
  // it gets a connection that is not connected.
  void whenOpen(Use use);

 private:
  void opened(const QDBusConnection& bus);

  Dispatch& dispatch_;
  Connect connect_;
  QDBusConnection bus_{QString()};  // no connection until there is one
  std::vector<Use> waiting_;        // while it is being opened
  QObject calls_;                   // owner of what waits for an answer
  // What a worker brings home finds the bus by this, or finds it gone.
  std::shared_ptr<SessionBus*> self_ = std::make_shared<SessionBus*>(this);
};

}  // namespace tessaly
