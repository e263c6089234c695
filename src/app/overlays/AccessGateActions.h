// What the user can do at the gate that asks for access to the whole disk.
//
// The program makes one and hands it to the gate; whatever it is made of outlives it. Main thread
// only.
#pragma once

#include <functional>
#include <string>

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include "session/AccessController.h"
#include "system/FullDiskAccess.h"

namespace tessaly {

class AccessGateActions : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("The program makes one and hands it to the gate.")
  Q_PROPERTY(tessaly::AccessController* access READ access CONSTANT)
  // The user has set out to grant access, so a new start is what he does next.
  Q_PROPERTY(bool hasBegun READ hasBegun NOTIFY hasBegunChanged)

 public:
  struct Services {
    AccessController& access;
    Workspace& workspace;
    FullDiskAccess::Relaunch relaunch;
  };

  explicit AccessGateActions(Services services, QObject* parent = nullptr);

  AccessController* access() const { return &services_.access; }
  bool hasBegun() const { return hasBegun_; }

  // Shows which copy of the program it is, then where the system's settings grant access to it.
  Q_INVOKABLE void grant();

  // Starts the program anew. Does nothing while it is doing so.
  Q_INVOKABLE void relaunch();

  // Looks again whether access has been granted.
  Q_INVOKABLE void refresh();

  // Goes on without.
  Q_INVOKABLE void skip();

 signals:
  void hasBegunChanged();

 private:
  Services services_;
  bool hasBegun_ = false;
  bool isRelaunching_ = false;
};

}  // namespace tessaly
