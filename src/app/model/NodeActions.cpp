#include "app/model/NodeActions.h"

#include <utility>

#include "scan/Remainder.h"

namespace tessaly {

NodeActions::NodeActions(Services services, QObject* parent)
    : QObject(parent), services_(std::move(services)) {}

void NodeActions::give(const NodeHandle& node, const OnPath& act) {
  if (node.isValid() && !isRemainder(*node.node())) act(node.node()->path());
}

void NodeActions::reveal(const NodeHandle& node) {
  give(node, [this](const std::string& path) { services_.workspace.reveal({path}); });
}

void NodeActions::open(const NodeHandle& node) {
  give(node, [this](const std::string& path) { services_.workspace.open(path); });
}

void NodeActions::quickLook(const NodeHandle& node) {
  give(node, services_.quickLook);
}

void NodeActions::copyPath(const NodeHandle& node) {
  give(node, [this](const std::string& path) { services_.pasteboard.setText(path); });
}

void NodeActions::openTerminal(const NodeHandle& node) {
  give(node, services_.openTerminal);
}

void NodeActions::openInEditor(const NodeHandle& node) {
  give(node, services_.openInEditor);
}

}  // namespace tessaly
