// The actions of the gate that asks for access to the whole disk.
//
// Main thread only. The services must outlive it.
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
  QML_UNCREATABLE("Created in C++.")
  Q_PROPERTY(tessaly::AccessController* access READ access CONSTANT)
  // The user has started to grant access; the next step is a relaunch.
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

  // Shows which copy of the program runs, then the system's settings that grant access to it.
  Q_INVOKABLE void grant();

  // Relaunches the program. Does nothing while a relaunch is under way.
  Q_INVOKABLE void relaunch();

  // Checks again whether access has been granted.
  Q_INVOKABLE void refresh();

  // Closes the gate without access.
  Q_INVOKABLE void skip();

 signals:
  void hasBegunChanged();

 private:
  Services services_;
  bool hasBegun_ = false;
  bool isRelaunching_ = false;
};

}  // namespace tessaly
