// The short message at the bottom of the window.
#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "session/ScanSession.h"

namespace tessaly {

class ToastState : public QObject {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(
      tessaly::ScanSession* session READ session WRITE setSession NOTIFY sessionChanged REQUIRED)
  Q_PROPERTY(bool shown READ isShown NOTIFY changed)
  // The message on show, or else the last one, which is still to be seen while it fades.
  Q_PROPERTY(QString text READ text NOTIFY changed)

 public:
  using QObject::QObject;

  ScanSession* session() const { return session_; }
  void setSession(ScanSession* session);

  bool isShown() const { return shown_; }
  QString text() const { return text_; }

 signals:
  void sessionChanged();
  void changed();

 private:
  void take();

  ScanSession* session_ = nullptr;
  bool shown_ = false;
  QString text_;
};

}  // namespace tessaly
