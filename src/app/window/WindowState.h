// Which of the window's bars and buttons stand, as the session goes.
#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include "session/ScanSession.h"

namespace tessaly {

class WindowState : public QObject {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(
      tessaly::ScanSession* session READ session WRITE setSession NOTIFY sessionChanged REQUIRED)
  Q_PROPERTY(bool showsBackButton READ showsBackButton NOTIFY changed)
  Q_PROPERTY(bool showsBreadcrumbs READ showsBreadcrumbs NOTIFY changed)

 public:
  using QObject::QObject;

  ScanSession* session() const { return session_; }
  void setSession(ScanSession* session);

  // There is a folder to go back to, whichever pane is in front.
  bool showsBackButton() const;
  // The same, and the map is in front.
  bool showsBreadcrumbs() const;

 signals:
  void sessionChanged();
  void changed();

 private:
  ScanSession* session_ = nullptr;
};

}  // namespace tessaly
