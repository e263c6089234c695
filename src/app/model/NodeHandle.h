// A DiskNode as QML passes it from one view to the next: opaque, so that names and paths stay the
// bytes they are. Copying it is as cheap as copying the node.
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
  // False for the handle that holds no node.
  Q_PROPERTY(bool valid READ isValid CONSTANT)

 public:
  NodeHandle() = default;
  explicit NodeHandle(std::optional<DiskNode> node) : node_(std::move(node)) {}

  bool isValid() const { return node_.has_value(); }
  const std::optional<DiskNode>& node() const { return node_; }

  // By value, as nodes are equal: two scans of an unchanged folder give equal handles.
  friend bool operator==(const NodeHandle&, const NodeHandle&) = default;

 private:
  std::optional<DiskNode> node_;
};

}  // namespace tessaly

Q_DECLARE_METATYPE(tessaly::NodeHandle)
