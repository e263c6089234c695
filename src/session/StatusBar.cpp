#include "session/StatusBar.h"

#include <utility>

#include "session/StatusMenu.h"

namespace tessaly {

StatusBar::StatusBar(ScanSession& session, LoginItem& loginItem, StatusBarExtra& extra,
                     Services services, QObject* parent)
    : QObject(parent),
      session_(session),
      loginItem_(loginItem),
      extra_(extra),
      services_(std::move(services)),
      openAtLogin_(loginItem.isEnabled()) {
  connect(&session_.machine(), &MachineState::diskChanged, this, &StatusBar::showDisk);
  showDisk();
}

StatusBar::~StatusBar() {
  extra_.setMenu({});
}

void StatusBar::showDisk() {
  extra_.setLabel(StatusMenu::label(session_.machine().disk()));
  showMenu();
}

void StatusBar::showMenu() {
  const StatusMenu::Actions actions = {
      .open = services_.showMainWindow,
      .quickSearch =
          [this] {
            services_.activate();
            session_.shown().setSearchOpen(true);
          },
      .scanHome =
          [this] {
            session_.scan(session_.homeDirectory());
            services_.activate();
          },
      .toggleOpenAtLogin = [this] { toggleOpenAtLogin(); },
      .quit = services_.quit,
  };
  extra_.setMenu(StatusMenu::entries(session_.machine().disk(), openAtLogin_, actions));
}

// Shows the state that the system reports afterwards, so a failed change has no effect.
void StatusBar::toggleOpenAtLogin() {
  loginItem_.setEnabled(!openAtLogin_);
  openAtLogin_ = loginItem_.isEnabled();
  showMenu();
}

}  // namespace tessaly
