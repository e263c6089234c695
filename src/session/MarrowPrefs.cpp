#include "session/MarrowPrefs.h"

namespace tessaly {

MarrowPrefs::MarrowPrefs(SettingsStore& defaults, QObject* parent)
    : QObject(parent),
      defaults_(defaults),
      startHidden_(defaults.boolean(startHiddenKey).value_or(false)),
      diskAlerts_(defaults.boolean(diskAlertsKey).value_or(true)) {}

void MarrowPrefs::setStartHidden(bool hidden) {
  if (hidden == startHidden_) return;
  startHidden_ = hidden;
  defaults_.setBoolean(startHiddenKey, hidden);
  emit startHiddenChanged();
}

void MarrowPrefs::setDiskAlerts(bool alerts) {
  if (alerts == diskAlerts_) return;
  diskAlerts_ = alerts;
  defaults_.setBoolean(diskAlertsKey, alerts);
  emit diskAlertsChanged();
}

}  // namespace tessaly
