// The desktop's preview panel: a window that shows the content of a file without opening it in an
// application. Main thread only.
#pragma once

#include <string>

namespace tessaly {

// Provides the items that a panel shows.
class PreviewSource {
 public:
  virtual ~PreviewSource() = default;

  virtual int numberOfPreviewItems() const = 0;
  // The file URL of an item, always ASCII.
  virtual std::string previewItemAt(int index) const = 0;
};

class PreviewPanel {
 public:
  virtual ~PreviewPanel() = default;

  // The source must outlive the panel or be replaced before it is destroyed; null for none.
  virtual void setDataSource(const PreviewSource* source) = 0;

  // Shows the panel with the first item of its source, in front of all windows, and gives it the
  // keyboard focus.
  virtual void makeKeyAndOrderFront() = 0;
};

}  // namespace tessaly
