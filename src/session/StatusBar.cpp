#include "session/StatusBar.h"

#include <utility>

#include "session/StatusMenu.h"

namespace tessaly {

StatusBar::StatusBar(ScanSession& session, LoginItem& loginItem, StatusBarExtra& extra,
                     Program program, QObject* parent)
    : QObject(parent),
      session_(session),
      loginItem_(loginItem),
      extra_(extra),
      program_(std::move(program)),
      openAtLogin_(loginItem.isEnabled()) {
  connect(&session_, &ScanSession::diskChanged, this, &StatusBar::showDisk);
  showDisk();
}

StatusBar::~StatusBar() {
  extra_.setMenu({});
}

void StatusBar::showDisk() {
  extra_.setLabel(StatusMenu::label(session_.disk()));
  showMenu();
}

void StatusBar::showMenu() {
  const StatusMenu::Actions actions = {
      .open = program_.showMainWindow,
      .quickSearch =
          [this] {
            program_.activate();
            session_.setSearchOpen(true);
          },
      .scanHome =
          [this] {
            session_.scan(session_.homeDirectory());
            program_.activate();
          },
      .toggleOpenAtLogin = [this] { toggleOpenAtLogin(); },
      .quit = program_.quit,
  };
  extra_.setMenu(StatusMenu::entries(session_.disk(), openAtLogin_, actions));
}

// What the system says afterwards counts, so a change that failed shows as none.
void StatusBar::toggleOpenAtLogin() {
  loginItem_.setEnabled(!openAtLogin_);
  openAtLogin_ = loginItem_.isEnabled();
  showMenu();
}

}  // namespace tessaly
