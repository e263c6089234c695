// Whether the program can read the whole disk, for the views: the result of the last probe, and
// whether the gate that asks for the permission is shown.
//
// Main thread only; a probe blocks while it reads.
#pragma once

#include <functional>
#include <string_view>

#include <QObject>

#include "platform/SettingsStore.h"

namespace tessaly {

class AccessController : public QObject {
  Q_OBJECT
  Q_PROPERTY(bool isGranted READ isGranted NOTIFY isGrantedChanged)
  Q_PROPERTY(bool showGate READ showGate WRITE setShowGate NOTIFY showGateChanged)
  Q_PROPERTY(bool needsRelaunch READ needsRelaunch NOTIFY needsRelaunchChanged)

 public:
  static constexpr std::string_view grantedKey = "marrow.fullDiskAccessGranted";
  static constexpr std::string_view skippedKey = "marrow.fdaGateSkipped";

  using Probe = std::function<bool()>;

  // Probes at once. The gate is shown unless access is granted or the user skipped it in an earlier
  // run. The settings must outlive the controller.
  AccessController(SettingsStore& defaults, Probe probe, QObject* parent = nullptr);

  bool isGranted() const { return isGranted_; }
  bool showGate() const { return showGate_; }
  void setShowGate(bool show);
  // The user is granting access, which takes effect when the program is restarted.
  bool needsRelaunch() const { return needsRelaunch_; }

  // Probes again. Hides the gate if access is granted; if not and the gate is shown, a relaunch is
  // needed.
  Q_INVOKABLE void refresh();

  // The user has started to grant access.
  Q_INVOKABLE void beginGrant();

  // The user continues without access. Later starts do not ask again.
  Q_INVOKABLE void skip();

 signals:
  void isGrantedChanged();
  void showGateChanged();
  void needsRelaunchChanged();

 private:
  bool probe();
  void set(bool& field, bool value, void (AccessController::*changed)());

  SettingsStore& defaults_;
  Probe probe_;
  bool isGranted_;
  bool showGate_;
  bool needsRelaunch_ = false;
};

}  // namespace tessaly
