#include "app/window/NodeMenuState.h"

#include "app/model/DisplayText.h"

namespace tessaly {

void NodeMenuState::setSession(ScanSession* session) {
  if (session == session_) return;
  if (session_ != nullptr) session_->disconnect(this);
  session_ = session;
  if (session_ != nullptr) {
    connect(session_, &ScanSession::menuNodeChanged, this, &NodeMenuState::changed);
  }
  emit sessionChanged();
  emit changed();
}

bool NodeMenuState::isShown() const {
  return session_ != nullptr && session_->menuNode().has_value();
}

QString NodeMenuState::title() const {
  return isShown() ? displayText(session_->menuNode()->name()) : QStringLiteral("Item");
}

NodeHandle NodeMenuState::node() const {
  return session_ != nullptr ? NodeHandle(session_->menuNode()) : NodeHandle();
}

void NodeMenuState::dismiss() {
  if (session_ != nullptr) session_->setMenuNode(std::nullopt);
}

void NodeMenuState::addToQueue(const NodeHandle& node) {
  if (session_ != nullptr && node.isValid()) session_->addToQueue(*node.node());
}

void NodeMenuState::trash(const NodeHandle& node) {
  if (session_ != nullptr && node.isValid()) session_->trash(*node.node());
}

}  // namespace tessaly
