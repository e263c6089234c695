#include "app/model/NodeActions.h"

#include <utility>

#include "scan/Remainder.h"

namespace tessaly {

NodeActions::NodeActions(Doors doors, QObject* parent)
    : QObject(parent), doors_(std::move(doors)) {}

void NodeActions::give(const NodeHandle& node, const OnPath& act) {
  if (node.isValid() && !isRemainder(*node.node())) act(node.node()->path());
}

void NodeActions::reveal(const NodeHandle& node) {
  give(node, [this](const std::string& path) { doors_.workspace.reveal({path}); });
}

void NodeActions::open(const NodeHandle& node) {
  give(node, [this](const std::string& path) { doors_.workspace.open(path); });
}

void NodeActions::quickLook(const NodeHandle& node) {
  give(node, doors_.quickLook);
}

void NodeActions::copyPath(const NodeHandle& node) {
  give(node, [this](const std::string& path) { doors_.pasteboard.setText(path); });
}

void NodeActions::openTerminal(const NodeHandle& node) {
  give(node, doors_.openTerminal);
}

void NodeActions::openInEditor(const NodeHandle& node) {
  give(node, doors_.openInEditor);
}

}  // namespace tessaly
