// Notifications by the service that answers to org.freedesktop.Notifications on the session bus, as
// the Desktop Notifications Specification 1.2 of freedesktop.org describes it. Main thread only;
// nothing waits for the service, and where there is none, nothing is shown.
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

  // Nothing: any program may post here. What the user thinks of it he tells the desktop, which then
  // keeps the notifications to itself.
  void requestAuthorization() override {}

  void post(const Notification& notification) override;

 private:
  // What the service knows under an identifier.
  struct Shown {
    std::uint32_t id = 0;  // as the service calls it; 0 before there is one
    QString owner;         // of the service at that time: another one has other ids
    bool isUnderWay = false;
    std::optional<Notification> next;  // came meanwhile, and waits for the id
  };

  void send(const Notification& notification);
  void notify(const Notification& notification, std::uint32_t replacedId);
  void answered(const std::string& identifier, const QDBusMessage& reply);

  std::map<std::string, Shown> shown_;  // by identifier
  SessionBus bus_;
};

}  // namespace tessaly
