// The two switches that the user sets once. Read at construction, written with every change.
//
// Main thread only. One for the program; the settings outlive it.
#pragma once

#include <string_view>

#include <QObject>

#include "platform/SettingsStore.h"

namespace tessaly {

class MarrowPrefs : public QObject {
  Q_OBJECT
  Q_PROPERTY(bool startHidden READ startHidden WRITE setStartHidden NOTIFY startHiddenChanged)
  Q_PROPERTY(bool diskAlerts READ diskAlerts WRITE setDiskAlerts NOTIFY diskAlertsChanged)

 public:
  static constexpr std::string_view startHiddenKey = "marrow.startHidden";
  static constexpr std::string_view diskAlertsKey = "marrow.diskAlerts";

  explicit MarrowPrefs(SettingsStore& defaults, QObject* parent = nullptr);

  // Start in the background, with the status-bar extra only. Takes effect at the next start. Off
  // unless it was switched on.
  bool startHidden() const { return startHidden_; }
  void setStartHidden(bool hidden);

  // Tell when the disk is nearly full. On unless it was switched off.
  bool diskAlerts() const { return diskAlerts_; }
  void setDiskAlerts(bool alerts);

  // Asks for all main windows to come forward, from wherever they are.
  Q_INVOKABLE void showMainWindow() { emit mainWindowWanted(); }

  SettingsStore& defaults() const { return defaults_; }

 signals:
  void startHiddenChanged();
  void diskAlertsChanged();
  void mainWindowWanted();

 private:
  SettingsStore& defaults_;
  bool startHidden_;
  bool diskAlerts_;
};

}  // namespace tessaly
