// The extra as an item of the notification area, by the StatusNotifierItem specification of
// freedesktop.org: it registers with the service org.kde.StatusNotifierWatcher on the session bus,
// and again with each new owner of that name. Main thread only; nothing waits for the bus.
//
// It is shown while a watcher has registered it and has a host that draws items.
// docs/status-item.md explains why it is not a QSystemTrayIcon.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include <QImage>
#include <QObject>

#include "app/desktop/MenuOnBus.h"
#include "app/desktop/SessionBus.h"
#include "app/desktop/StatusItem.h"
#include "platform/Dispatch.h"
#include "platform/StatusBarExtra.h"

class QDBusServiceWatcher;

namespace tessaly {

class LinuxStatusBarExtra final : public QObject, public StatusBarExtra {
  Q_OBJECT

 public:
  // The pictures of a label, one per size.
  using Paint = std::function<std::vector<QImage>(const Label&)>;

  LinuxStatusBarExtra(Dispatch& dispatch, Paint paint,
                      SessionBus::Connect connect = SessionBus::connectToReal);
  ~LinuxStatusBarExtra() override;

  void setLabel(const Label& label) override;
  void setMenu(std::vector<Entry> menu) override;
  Presence presence() const override { return presence_; }
  void setPresenceChanged(std::function<void()> changed) override;

 private slots:
  void askForHost();

 private:
  void opened(QDBusConnection& bus);
  void exportTo(QDBusConnection& bus);
  void watch(QDBusConnection& bus);
  void ownerChanged(const QString& owner);
  void registerItem();
  void setPresence(Presence presence);

  Paint paint_;
  std::optional<Label> label_;
  Presence presence_ = Presence::unknown;
  std::function<void()> presenceChanged_;
  QString ownName_;            // on the bus
  unsigned registration_ = 0;  // a counter; answers to earlier registrations are ignored
  unsigned question_ = 0;      // a counter for the question whether there is a host; the same
  MenuOnBus menu_;
  StatusItem item_;
  std::unique_ptr<QDBusServiceWatcher> watcher_;
  SessionBus bus_;
};

}  // namespace tessaly
