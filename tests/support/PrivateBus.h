// A message bus for one test: only the test's own connections are on it, and it starts no service
// of the machine. Needs a QCoreApplication.
#pragma once

#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QString>
#include <QStringList>

#include "platform/Process.h"
#include "support/TempTree.h"

namespace tessaly {

class PrivateBus {
 public:
  PrivateBus();
  ~PrivateBus();
  PrivateBus(const PrivateBus&) = delete;
  PrivateBus& operator=(const PrivateBus&) = delete;

  // False if dbus-daemon could not be started.
  bool isRunning() const { return !address_.isEmpty(); }

  // The value for DBUS_SESSION_BUS_ADDRESS.
  const QString& address() const { return address_; }

  // The connection named `who`, opened on first use. Any thread.
  QDBusConnection connection(const QString& who);

  // Makes the bus run a shell command when a client wants a service of this name. Call it before
  // the first connection is opened.
  void startServiceBy(const QString& service, const std::string& shellCommand);

 private:
  TempTree folder_;  // with the bus's configuration and services
  // Not a QProcess: the way it forks blinds the thread sanitizer on this thread.
  std::optional<Process> daemon_;
  QString address_;
  QStringList names_;  // of the connections
  std::mutex namesMutex_;
};

// An object on a bus that records its calls, and answers each at once with an empty reply by
// default. Lives on the thread that created it, and needs its event loop.
class BusObject : public QDBusVirtualObject {
 public:
  using Answer = std::function<void(const QDBusMessage& call, const QDBusConnection& bus)>;

  QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

  std::vector<QDBusMessage> calls;
  Answer answer;  // sends the reply, now or later
};

// Sends a call and runs the event loop until the reply is there. QDBus::BlockWithGui does the same,
// but in Qt 6.4 it waits forever if the reply arrives before it has started its event loop.
QDBusMessage callAndWait(const QDBusConnection& from, const QDBusMessage& call);

// Waits until the object at `path` of `service` has handled everything that `from` has sent so far,
// and `from` has received the replies to it. Runs the event loop.
void catchUp(const QDBusConnection& from, const QString& service, const QString& path);

}  // namespace tessaly
