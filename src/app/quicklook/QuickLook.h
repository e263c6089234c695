// Shows one file at a time in the desktop's preview panel. The program has one of these, for all of
// its views. Main thread only.
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
  QML_UNCREATABLE("The program makes one and hands it to its views.")

 public:
  // `panel` outlives this object; null where the desktop has none.
  explicit QuickLook(PreviewPanel* panel, QObject* parent = nullptr);
  ~QuickLook() override;

  // The file URL of what was shown last; absent until the first.
  const std::optional<std::string>& url() const { return url_; }

  // Shows the item at `path`, which is absolute. Another one already on show gives way.
  void show(const std::string& path);

  // The same for views. Does nothing for a handle that holds no node.
  Q_INVOKABLE void show(const tessaly::NodeHandle& node);

  // 1 once there is something to show.
  int numberOfPreviewItems() const override;
  // The url, whatever the index; that of "/" where there is none.
  std::string previewItemAt(int index) const override;

 private:
  PreviewPanel* panel_;
  std::optional<std::string> url_;
};

}  // namespace tessaly
