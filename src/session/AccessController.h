// Whether the program may read all of the disk, as the views need to know it: the answer of the
// last probe, and whether the gate that asks for the right stands before the window.
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

  // Probes at once. The gate stands unless access is granted, or the user has gone past it in an
  // earlier run. The settings outlive the controller.
  AccessController(SettingsStore& defaults, Probe probe, QObject* parent = nullptr);

  bool isGranted() const { return isGranted_; }
  bool showGate() const { return showGate_; }
  void setShowGate(bool show);
  // The right has been asked for, and will not be had before the program is started anew.
  bool needsRelaunch() const { return needsRelaunch_; }

  // Probes again. The gate vanishes once access is granted; while it stands without, a new start
  // still lies ahead.
  Q_INVOKABLE void refresh();

  // The user is on the way to grant access.
  Q_INVOKABLE void beginGrant();

  // The user goes on without, and is not asked again at later starts.
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
