// The user's two preferences. Read at construction, written with every change.
//
// Main thread only. The program has one instance; the settings must outlive it.
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

  // Start in the background, with the status-bar extra only. Takes effect at the next start. Off by
  // default.
  bool startHidden() const { return startHidden_; }
  void setStartHidden(bool hidden);

  // Notify when the disk is nearly full. On by default.
  bool diskAlerts() const { return diskAlerts_; }
  void setDiskAlerts(bool alerts);

  // Asks for all main windows to come to the front.
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
