// Notifications through the service org.freedesktop.Notifications on the session bus, by the
// Desktop Notifications Specification 1.2 of freedesktop.org. Main thread only; nothing waits for
// the service, and without one nothing is shown.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "app/desktop/SessionBus.h"
#include "platform/NotificationCenter.h"

namespace tessaly {

class LinuxNotifications final : public NotificationCenter {
 public:
  explicit LinuxNotifications(Dispatch& dispatch,
                              SessionBus::Connect connect = SessionBus::connectToReal);

  // Does nothing: any program may post here. Users block notifications in the settings of the
  // desktop.
  void requestAuthorization() override {}

  void post(const Notification& notification) override;

 private:
  // The notification that the service shows for an identifier.
  struct Shown {
    std::uint32_t id = 0;  // id given by the service; 0 before its answer
    QString owner;         // of the service at that time: another one has other ids
    bool isUnderWay = false;
    std::optional<Notification> next;  // posted meanwhile; waits for the id
  };

  void send(const Notification& notification);
  void notify(const Notification& notification, std::uint32_t replacedId);
  void answered(const std::string& identifier, const QDBusMessage& reply);

  std::map<std::string, Shown> shown_;  // by identifier
  SessionBus bus_;
};

}  // namespace tessaly
