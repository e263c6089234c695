// What failed, as the line in the window tells it.
#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "session/ScanSession.h"

namespace tessaly {

class FailureState : public QObject {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(
      tessaly::ScanSession* session READ session WRITE setSession NOTIFY sessionChanged REQUIRED)
  Q_PROPERTY(bool shown READ isShown NOTIFY changed)
  // The latest failure that was not dismissed.
  Q_PROPERTY(QString text READ text NOTIFY changed)
  // How many wait behind it, "2 earlier"; empty for none.
  Q_PROPERTY(QString earlier READ earlier NOTIFY changed)

 public:
  using QObject::QObject;

  ScanSession* session() const { return session_; }
  void setSession(ScanSession* session);

  bool isShown() const;
  QString text() const;
  QString earlier() const;

 signals:
  void sessionChanged();
  void changed();

 private:
  ScanSession* session_ = nullptr;
};

}  // namespace tessaly
