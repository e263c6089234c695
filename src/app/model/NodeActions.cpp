#include "app/model/NodeActions.h"

#include <utility>

namespace tessaly {

NodeActions::NodeActions(Doors doors, QObject* parent)
    : QObject(parent), doors_(std::move(doors)) {}

void NodeActions::reveal(const NodeHandle& node) {
  if (node.isValid()) doors_.workspace.reveal({node.node()->path()});
}

void NodeActions::open(const NodeHandle& node) {
  if (node.isValid()) doors_.workspace.open(node.node()->path());
}

void NodeActions::quickLook(const NodeHandle& node) {
  if (node.isValid()) doors_.quickLook(node.node()->path());
}

void NodeActions::copyPath(const NodeHandle& node) {
  if (node.isValid()) doors_.pasteboard.setText(node.node()->path());
}

void NodeActions::openTerminal(const NodeHandle& node) {
  if (node.isValid()) doors_.openTerminal(node.node()->path());
}

void NodeActions::openInEditor(const NodeHandle& node) {
  if (node.isValid()) doors_.openInEditor(node.node()->path());
}

}  // namespace tessaly
