// What can be done with one item of the tree without changing anything: show it, open it, look into
// it, take its path along. Everything goes by the node's bytes.
//
// Main thread only. What it is made of outlives it.
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
  QML_UNCREATABLE("The program makes one and hands it to its views.")

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

  // Each does nothing for a handle without a node, or with one that is no item of the disk.
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
