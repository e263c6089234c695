// The warning before something goes to the Trash that the user will hardly want there.
#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "session/ScanSession.h"

namespace tessaly {

class ProtectedLocationState : public QObject {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(
      tessaly::ScanSession* session READ session WRITE setSession NOTIFY sessionChanged REQUIRED)
  Q_PROPERTY(bool shown READ isShown NOTIFY changed)
  // Why, and below an empty line the item's path.
  Q_PROPERTY(QString message READ message NOTIFY changed)

 public:
  using QObject::QObject;

  ScanSession* session() const { return session_; }
  void setSession(ScanSession* session);

  bool isShown() const;
  QString message() const;

 signals:
  void sessionChanged();
  void changed();

 private:
  ScanSession* session_ = nullptr;
};

}  // namespace tessaly
