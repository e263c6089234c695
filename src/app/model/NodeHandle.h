// A DiskNode that QML passes between views: opaque, so that names and paths keep their bytes.
// Copying it is as cheap as copying the node.
#pragma once

#include <optional>
#include <utility>

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include "scan/DiskNode.h"

namespace tessaly {

class NodeHandle {
  Q_GADGET
  QML_VALUE_TYPE(nodeHandle)
  // False for a handle without a node.
  Q_PROPERTY(bool valid READ isValid CONSTANT)

 public:
  NodeHandle() = default;
  explicit NodeHandle(std::optional<DiskNode> node) : node_(std::move(node)) {}

  bool isValid() const { return node_.has_value(); }
  const std::optional<DiskNode>& node() const { return node_; }

  // By value, like nodes: two scans of an unchanged folder give equal handles.
  friend bool operator==(const NodeHandle&, const NodeHandle&) = default;

 private:
  std::optional<DiskNode> node_;
};

}  // namespace tessaly

Q_DECLARE_METATYPE(tessaly::NodeHandle)
