// A message bus of a test's own: nobody is on it but those whom the test lets in, and it starts no
// service of the machine. For tests with a QCoreApplication.
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

  // False where dbus-daemon could not be started.
  bool isRunning() const { return !address_.isEmpty(); }

  // As DBUS_SESSION_BUS_ADDRESS takes it.
  const QString& address() const { return address_; }

  // A new connection of somebody who is not there yet, else the one he has. Any thread.
  QDBusConnection connection(const QString& who);

  // Has the bus run a shell command when somebody wants a service of this name. To be said before
  // the first connection is made.
  void startServiceBy(const QString& service, const std::string& shellCommand);

 private:
  TempTree folder_;  // of the bus's configuration and its services
  // None of Qt's own: how QProcess forks makes the thread sanitizer blind on this thread.
  std::optional<Process> daemon_;
  QString address_;
  QStringList names_;  // of the connections
  std::mutex namesMutex_;
};

// An object on a bus that writes down what it is asked for, and answers at once with nothing unless
// it is told otherwise. Lives on the thread that made it, and needs its event loop.
class BusObject : public QDBusVirtualObject {
 public:
  using Answer = std::function<void(const QDBusMessage& call, const QDBusConnection& bus)>;

  QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

  std::vector<QDBusMessage> calls;
  Answer answer;  // sends the reply, now or later
};

// Waits until all that `from` has sent so far has been dealt with by the object at `path` of
// `service`, and what that has answered so far by `from`. Runs the event loop meanwhile.
void catchUp(const QDBusConnection& from, const QString& service, const QString& path);

}  // namespace tessaly
