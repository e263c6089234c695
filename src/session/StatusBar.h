// Keeps the status-bar extra in step with the disk and the login item, and does what its menu says.
//
// Main thread only. What it is given outlives it; when it goes, the extra keeps what it shows, but
// its buttons are taken away.
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
  // What the program does as a whole.
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
