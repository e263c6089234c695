#include "app/overlays/AccessGateActions.h"

#include <utility>

#include <QPointer>

namespace tessaly {

AccessGateActions::AccessGateActions(Services services, QObject* parent)
    : QObject(parent), services_(std::move(services)) {
  // If quitting is refused, the button must work again.
  services_.relaunch.quit = [self = QPointer(this), quit = services_.relaunch.quit] {
    if (self) self->isRelaunching_ = false;
    if (quit) quit();
  };
}

void AccessGateActions::grant() {
  FullDiskAccess::revealRunningApp(services_.workspace, services_.relaunch.application);
  FullDiskAccess::openSystemSettings(services_.workspace);
  services_.access.beginGrant();
  if (std::exchange(hasBegun_, true)) return;
  emit hasBegunChanged();
}

void AccessGateActions::relaunch() {
  if (std::exchange(isRelaunching_, true)) return;
  FullDiskAccess::relaunch(services_.relaunch);
}

void AccessGateActions::refresh() {
  services_.access.refresh();
}

void AccessGateActions::skip() {
  services_.access.skip();
}

}  // namespace tessaly
