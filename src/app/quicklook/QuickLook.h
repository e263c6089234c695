// Shows one file at a time in the desktop's preview panel. One instance for all views of the
// program. Main thread only.
#pragma once

#include <optional>
#include <string>

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include "app/model/NodeHandle.h"
#include "platform/PreviewPanel.h"

namespace tessaly {

class QuickLook : public QObject, public PreviewSource {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Created in C++.")

 public:
  // `panel` must outlive this object; null if the desktop has none.
  explicit QuickLook(PreviewPanel* panel, QObject* parent = nullptr);
  ~QuickLook() override;

  // The file URL of the last item; absent before the first.
  const std::optional<std::string>& url() const { return url_; }

  // Shows the item at `path`, which is absolute, instead of the present one.
  void show(const std::string& path);

  // The same for views. Does nothing for a handle without a node.
  Q_INVOKABLE void show(const tessaly::NodeHandle& node);

  // 1 once there is an item.
  int numberOfPreviewItems() const override;
  // The URL for any index; that of "/" before the first item.
  std::string previewItemAt(int index) const override;

 private:
  PreviewPanel* panel_;
  std::optional<std::string> url_;
};

}  // namespace tessaly
