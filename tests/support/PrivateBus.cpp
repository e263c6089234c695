#include "support/PrivateBus.h"

#include <filesystem>
#include <fstream>
#include <utility>

namespace tessaly {

namespace {

const QString& fence() {
  static const QString interface = QStringLiteral("tessaly.test.Fence");
  return interface;
}

// Unlike that of a session, without the folders where the machine's services are listed. The socket
// goes when the folder does.
std::string configuration(const std::string& folder, const std::string& services) {
  return "<busconfig><type>session</type><listen>unix:tmpdir=" + folder + "</listen><servicedir>" +
         services +
         "</servicedir><policy context='default'><allow send_destination='*'/>"
         "<allow receive_sender='*'/><allow own='*'/></policy></busconfig>";
}

}  // namespace

PrivateBus::PrivateBus() {
  const std::string services = folder_.path() + "/services";
  std::filesystem::create_directory(services);
  const std::string file = folder_.path() + "/bus.conf";
  std::ofstream(file) << configuration(folder_.path(), services);
  daemon_.setProgram(QStringLiteral("dbus-daemon"));
  daemon_.setArguments({QStringLiteral("--config-file=") + QString::fromStdString(file),
                        QStringLiteral("--nofork"), QStringLiteral("--print-address")});
  daemon_.start();
  if (daemon_.waitForReadyRead()) address_ = QString::fromUtf8(daemon_.readLine()).trimmed();
}

PrivateBus::~PrivateBus() {
  for (const QString& name : std::as_const(names_)) QDBusConnection::disconnectFromBus(name);
  daemon_.kill();
  daemon_.waitForFinished();
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

void catchUp(const QDBusConnection& from, const QString& service, const QString& path) {
  from.call(QDBusMessage::createMethodCall(service, path, fence(), QStringLiteral("Pass")),
            QDBus::BlockWithGui);
}

}  // namespace tessaly
