#include "support/PrivateBus.h"

#include <filesystem>
#include <fstream>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>

#include <QDBusPendingCallWatcher>
#include <QEventLoop>

#include "support/Eventually.h"

namespace tessaly {

namespace {

const QString& fence() {
  static const QString interface = QStringLiteral("tessaly.test.Fence");
  return interface;
}

std::string socketIn(const std::string& folder) {
  return folder + "/socket";
}

// Whether a server listens at `path`.
bool answers(const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof address.sun_path) return false;
  path.copy(address.sun_path, path.size());
  const int end = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const bool isConnected =
      connect(end, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
  close(end);
  return isConnected;
}

// Unlike a session's bus, it does not list the services of the machine. The socket is deleted with
// the folder.
std::string configuration(const std::string& folder, const std::string& services) {
  return "<busconfig><type>session</type><listen>unix:path=" + socketIn(folder) +
         "</listen><servicedir>" + services +
         "</servicedir><policy context='default'><allow send_destination='*'/>"
         "<allow receive_sender='*'/><allow own='*'/></policy></busconfig>";
}

}  // namespace

PrivateBus::PrivateBus() {
  const std::string services = folder_.path() + "/services";
  std::filesystem::create_directory(services);
  const std::string file = folder_.path() + "/bus.conf";
  std::ofstream(file) << configuration(folder_.path(), services);
  Result<Process> launched =
      Process::launch({.path = "/usr/bin/dbus-daemon",
                       .args = {"--config-file=" + file, "--nofork", "--nopidfile"},
                       // The bus must not keep the test's own streams open if the test dies.
                       .output = Process::Stream::captured,
                       .error = Process::Stream::captured});
  if (!launched) return;
  daemon_ = std::move(launched).value();
  const std::string socket = socketIn(folder_.path());
  bool hasGivenUp = false;
  eventually(
      [&] {
        if (answers(socket)) return true;
        hasGivenUp = daemon_->waitUntil(Deadline::after(0.002));
        return hasGivenUp;
      },
      "an answer of the bus");
  if (hasGivenUp) return;
  address_ = QStringLiteral("unix:path=") + QString::fromStdString(socket);
}

PrivateBus::~PrivateBus() {
  for (const QString& name : std::as_const(names_)) QDBusConnection::disconnectFromBus(name);
  if (!daemon_) return;
  daemon_->terminate();
  daemon_->waitUntil(Deadline::never());
}

QDBusConnection PrivateBus::connection(const QString& who) {
  const QString name = address_ + QLatin1Char('/') + who;
  const std::lock_guard lock(namesMutex_);
  if (names_.contains(name)) return QDBusConnection(name);
  names_ << name;
  return QDBusConnection::connectToBus(address_, name);
}

void PrivateBus::startServiceBy(const QString& service, const std::string& shellCommand) {
  const std::string name = service.toStdString();
  std::ofstream(folder_.path() + "/services/" + name + ".service")
      << "[D-BUS Service]\nName=" << name << "\nExec=/bin/sh -c \"" << shellCommand << "\"\n";
}

bool BusObject::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
  if (message.interface() == fence()) {
    connection.send(message.createReply());
    return true;
  }
  calls.push_back(message);
  if (answer) {
    answer(message, connection);
  } else {
    connection.send(message.createReply());
  }
  return true;
}

QDBusMessage callAndWait(const QDBusConnection& from, const QDBusMessage& call) {
  // A watcher of a call that has its reply already announces that from the event loop.
  const QDBusPendingCallWatcher watcher(from.asyncCall(call));
  QEventLoop loop;
  QObject::connect(&watcher, &QDBusPendingCallWatcher::finished, &loop, &QEventLoop::quit);
  loop.exec(QEventLoop::ExcludeUserInputEvents);
  return watcher.reply();
}

void catchUp(const QDBusConnection& from, const QString& service, const QString& path) {
  callAndWait(from, QDBusMessage::createMethodCall(service, path, fence(), QStringLiteral("Pass")));
}

}  // namespace tessaly
