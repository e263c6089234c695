// Operations on one item of the tree that change nothing: reveal it, open it, preview it, copy its
// path. All use the bytes of the path.
//
// Main thread only. The constructor's arguments must outlive it.
#pragma once

#include <functional>
#include <string>

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include "app/model/NodeHandle.h"
#include "platform/Pasteboard.h"
#include "platform/Workspace.h"

namespace tessaly {

class NodeActions : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Created in C++.")

 public:
  using OnPath = std::function<void(const std::string& path)>;

  struct Services {
    Workspace& workspace;
    Pasteboard& pasteboard;
    OnPath quickLook;
    OnPath openTerminal;
    OnPath openInEditor;
  };

  explicit NodeActions(Services services, QObject* parent = nullptr);

  // Each does nothing for a handle without a node, or with a remainder.
  Q_INVOKABLE void reveal(const tessaly::NodeHandle& node);
  Q_INVOKABLE void open(const tessaly::NodeHandle& node);
  Q_INVOKABLE void quickLook(const tessaly::NodeHandle& node);
  Q_INVOKABLE void copyPath(const tessaly::NodeHandle& node);
  Q_INVOKABLE void openTerminal(const tessaly::NodeHandle& node);
  Q_INVOKABLE void openInEditor(const tessaly::NodeHandle& node);

 private:
  static void give(const NodeHandle& node, const OnPath& act);

  Services services_;
};

}  // namespace tessaly
