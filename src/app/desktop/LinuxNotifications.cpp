#include "app/desktop/LinuxNotifications.h"

#include <utility>

#include <QStringList>
#include <QVariantMap>

namespace tessaly {

namespace {

const QString& service() {
  static const QString name = QStringLiteral("org.freedesktop.Notifications");
  return name;
}

// The theme's sound for unsolicited messages. Without it the service would choose one.
QVariantMap hintsFor(const NotificationCenter::Notification& notification) {
  QVariantMap hints = {{QStringLiteral("desktop-entry"), QStringLiteral("tessaly")}};
  if (notification.hasSound) {
    hints.insert(QStringLiteral("sound-name"), QStringLiteral("message-new-instant"));
  } else {
    hints.insert(QStringLiteral("suppress-sound"), true);
  }
  return hints;
}

}  // namespace

LinuxNotifications::LinuxNotifications(Dispatch& dispatch, SessionBus::Connect connect)
    : bus_(dispatch, std::move(connect)) {}

void LinuxNotifications::post(const Notification& notification) {
  Shown& shown = shown_[notification.identifier];
  if (shown.isUnderWay) {
    shown.next = notification;
    return;
  }
  shown.isUnderWay = true;
  send(notification);
}

// A restarted service may have given this id to another program's notification.
void LinuxNotifications::send(const Notification& notification) {
  if (shown_.at(notification.identifier).id == 0) {
    notify(notification, 0);
    return;
  }
  QDBusMessage askOwner = QDBusMessage::createMethodCall(
      QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
      QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetNameOwner"));
  askOwner << service();
  bus_.call(askOwner, [this, notification](const QDBusMessage& reply) {
    const Shown& shown = shown_.at(notification.identifier);
    const bool isSameService =
        reply.type() == QDBusMessage::ReplyMessage && reply.arguments().value(0) == shown.owner;
    notify(notification, isSameService ? shown.id : 0);
  });
}

void LinuxNotifications::notify(const Notification& notification, std::uint32_t replacedId) {
  QDBusMessage message =
      QDBusMessage::createMethodCall(service(), QStringLiteral("/org/freedesktop/Notifications"),
                                     service(), QStringLiteral("Notify"));
  constexpr int asLongAsUsual = -1;
  // The service interprets the body as markup, and nothing else.
  message << QStringLiteral("Tessaly") << replacedId << QString()
          << QString::fromStdString(notification.title)
          << QString::fromStdString(notification.body).toHtmlEscaped() << QStringList()
          << hintsFor(notification) << asLongAsUsual;
  bus_.call(message, [this, identifier = notification.identifier](const QDBusMessage& reply) {
    answered(identifier, reply);
  });
}

void LinuxNotifications::answered(const std::string& identifier, const QDBusMessage& reply) {
  Shown& shown = shown_.at(identifier);
  const bool isShown = reply.type() == QDBusMessage::ReplyMessage;
  shown.id = isShown ? reply.arguments().value(0).toUInt() : 0;
  shown.owner = isShown ? reply.service() : QString();
  if (const auto next = std::exchange(shown.next, std::nullopt)) {
    send(*next);
  } else {
    shown.isUnderWay = false;
  }
}

}  // namespace tessaly
