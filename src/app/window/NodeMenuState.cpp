#include "app/window/NodeMenuState.h"

#include "app/model/DisplayText.h"
#include "scan/ShownName.h"

namespace tessaly {

NodeMenuState::NodeMenuState(ScanSession& session, QObject* parent)
    : QObject(parent), session_(session) {
  connect(&session_.shown(), &Shown::menuNodeChanged, this, &NodeMenuState::changed);
  connect(&session_.removal(), &Removal::movingChanged, this, &NodeMenuState::canTrashChanged);
}

bool NodeMenuState::isShown() const {
  return session_.shown().menuNode().has_value();
}

QString NodeMenuState::title() const {
  return isShown() ? displayText(shownName(*session_.shown().menuNode())) : QStringLiteral("Item");
}

NodeHandle NodeMenuState::node() const {
  return NodeHandle(session_.shown().menuNode());
}

void NodeMenuState::dismiss() {
  session_.shown().setMenuNode(std::nullopt);
}

void NodeMenuState::addToQueue(const NodeHandle& node) {
  if (node.isValid()) session_.cleanupQueue().addToQueue(*node.node());
}

void NodeMenuState::trash(const NodeHandle& node) {
  if (node.isValid()) session_.trash(*node.node());
}

}  // namespace tessaly
