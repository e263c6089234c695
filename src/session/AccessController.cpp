#include "session/AccessController.h"

#include <utility>

namespace tessaly {

AccessController::AccessController(SettingsStore& defaults, Probe probe, QObject* parent)
    : QObject(parent),
      defaults_(defaults),
      probe_(std::move(probe)),
      isGranted_(this->probe()),
      showGate_(!isGranted_ && !defaults.boolean(skippedKey).value_or(false)) {}

bool AccessController::probe() {
  const bool isGranted = probe_();
  if (isGranted) defaults_.setBoolean(grantedKey, true);
  return isGranted;
}

void AccessController::set(bool& field, bool value, void (AccessController::*changed)()) {
  if (field == value) return;
  field = value;
  emit(this->*changed)();
}

void AccessController::setShowGate(bool show) {
  set(showGate_, show, &AccessController::showGateChanged);
}

void AccessController::refresh() {
  const bool isGranted = probe();
  set(isGranted_, isGranted, &AccessController::isGrantedChanged);
  if (isGranted) {
    setShowGate(false);
    set(needsRelaunch_, false, &AccessController::needsRelaunchChanged);
  } else if (showGate_) {
    beginGrant();
  }
}

void AccessController::beginGrant() {
  set(needsRelaunch_, true, &AccessController::needsRelaunchChanged);
}

void AccessController::skip() {
  defaults_.setBoolean(skippedKey, true);
  setShowGate(false);
}

}  // namespace tessaly
