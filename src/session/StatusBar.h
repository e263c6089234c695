// Updates the status-bar extra with the disk usage and the login item, and carries out its menu.
//
// Main thread only. The arguments must outlive it; its destructor removes the extra's buttons and
// leaves the rest as it is.
#pragma once

#include <functional>

#include <QObject>

#include "platform/LoginItem.h"
#include "platform/StatusBarExtra.h"
#include "session/ScanSession.h"

namespace tessaly {

class StatusBar : public QObject {
  Q_OBJECT

 public:
  // Operations of the whole program.
  struct Services {
    std::function<void()> showMainWindow;
    std::function<void()> activate;
    std::function<void()> quit;
  };

  StatusBar(ScanSession& session, LoginItem& loginItem, StatusBarExtra& extra, Services services,
            QObject* parent = nullptr);
  ~StatusBar() override;

  bool openAtLogin() const { return openAtLogin_; }

 private:
  void showDisk();
  void showMenu();
  void toggleOpenAtLogin();

  ScanSession& session_;
  LoginItem& loginItem_;
  StatusBarExtra& extra_;
  Services services_;
  bool openAtLogin_;
};

}  // namespace tessaly
