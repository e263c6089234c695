#include "app/quicklook/QuickLook.h"

#include "platform/FileUri.h"

namespace tessaly {

QuickLook::QuickLook(PreviewPanel* panel, QObject* parent) : QObject(parent), panel_(panel) {}

QuickLook::~QuickLook() {
  if (panel_ != nullptr && url_) panel_->setDataSource(nullptr);
}

void QuickLook::show(const std::string& path) {
  url_ = fileUri(path);
  if (panel_ == nullptr) return;
  panel_->setDataSource(this);
  panel_->makeKeyAndOrderFront();
}

void QuickLook::show(const NodeHandle& node) {
  if (node.isValid()) show(node.node()->path());
}

int QuickLook::numberOfPreviewItems() const {
  return url_ ? 1 : 0;
}

std::string QuickLook::previewItemAt(int) const {
  return url_ ? *url_ : fileUri("/");
}

}  // namespace tessaly
