// The desktop's preview panel: one window that shows what a file holds without opening it in an
// application. Main thread only.
#pragma once

#include <string>

namespace tessaly {

// Who tells a panel what to show.
class PreviewSource {
 public:
  virtual ~PreviewSource() = default;

  virtual int numberOfPreviewItems() const = 0;
  // The file URL of an item, in ASCII, whatever the bytes of its path.
  virtual std::string previewItemAt(int index) const = 0;
};

class PreviewPanel {
 public:
  virtual ~PreviewPanel() = default;

  // The source outlives the panel, or is replaced before its end; null for none.
  virtual void setDataSource(const PreviewSource* source) = 0;

  // Shows the panel with the first item of its source, in front of everything, with the keyboard.
  virtual void makeKeyAndOrderFront() = 0;
};

}  // namespace tessaly
