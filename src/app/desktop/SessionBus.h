// The session bus without blocking: messages are sent in order on a connection that a worker thread
// opens at the first use. A bus that hangs, or a service that must be started or never answers,
// delays nothing else.
//
// Main thread only. The destructor drops waiting messages and later answers.
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
  // Called on a worker thread; may block.
  using Connect = std::function<QDBusConnection()>;
  // Gets the reply, or an error message.
  using Answer = std::function<void(const QDBusMessage&)>;
  using Use = std::function<void(QDBusConnection& bus)>;

  static QDBusConnection connectToReal() { return QDBusConnection::sessionBus(); }

  SessionBus(Dispatch& dispatch, Connect connect);
  SessionBus(const SessionBus&) = delete;
  SessionBus& operator=(const SessionBus&) = delete;

  // Calls a method. `answer` runs later on the main thread, exactly once: without a bus it gets an
  // error.
  void call(const QDBusMessage& method, Answer answer);

  // Sends a signal, which is lost without a bus.
  void emitSignal(const QDBusMessage& signal);

  // Runs `use` on the main thread once the bus is open, possibly at once. Without a bus it gets a
  // connection that is not connected.
  void whenOpen(Use use);

 private:
  void opened(const QDBusConnection& bus);

  Dispatch& dispatch_;
  Connect connect_;
  QDBusConnection bus_{QString()};  // not connected at first
  std::vector<Use> waiting_;        // while the connection is being opened
  QObject calls_;                   // owner of the pending calls
  // Tells the results of workers whether this object still exists.
  std::shared_ptr<SessionBus*> self_ = std::make_shared<SessionBus*>(this);
};

}  // namespace tessaly
