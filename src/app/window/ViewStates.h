// Creates the state objects of the window's views. Each is owned by its view.
//
// Main thread only. The session and the access controller must outlive the views.
#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include "app/panes/DiskMapState.h"
#include "app/queue/CleanupQueueState.h"
#include "app/sidebar/SidebarState.h"
#include "app/window/BreadcrumbModel.h"
#include "app/window/FailureState.h"
#include "app/window/NodeMenuState.h"
#include "app/window/ProtectedLocationState.h"
#include "app/window/ToastState.h"
#include "app/window/WindowState.h"
#include "session/AccessController.h"
#include "session/ScanSession.h"

namespace tessaly {

class ViewStates : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Created in C++.")

 public:
  ViewStates(ScanSession& session, AccessController& access) : session_(session), access_(access) {}

  Q_INVOKABLE tessaly::BreadcrumbModel* crumbs(QObject* view) const {
    return new BreadcrumbModel(session_.navigation(), view);
  }
  Q_INVOKABLE tessaly::FailureState* failure(QObject* view) const {
    return new FailureState(session_.messages(), view);
  }
  Q_INVOKABLE tessaly::DiskMapState* map(QObject* view) const {
    return new DiskMapState(session_, view);
  }
  Q_INVOKABLE tessaly::NodeMenuState* question(QObject* view) const {
    return new NodeMenuState(session_, view);
  }
  Q_INVOKABLE tessaly::CleanupQueueState* queue(QObject* view) const {
    return new CleanupQueueState(session_, view);
  }
  Q_INVOKABLE tessaly::SidebarState* sidebar(QObject* view) const {
    return new SidebarState(session_, access_, view);
  }
  Q_INVOKABLE tessaly::ToastState* toast(QObject* view) const {
    return new ToastState(session_.messages(), view);
  }
  Q_INVOKABLE tessaly::ProtectedLocationState* warning(QObject* view) const {
    return new ProtectedLocationState(session_.removal(), session_.homeDirectory(), view);
  }

 private:
  ScanSession& session_;
  AccessController& access_;
};

}  // namespace tessaly
