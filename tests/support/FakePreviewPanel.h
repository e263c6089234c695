// A preview panel that shows nothing, and records what it should show.
#pragma once

#include <string>
#include <vector>

#include "platform/PreviewPanel.h"

namespace tessaly {

class FakePreviewPanel final : public PreviewPanel {
 public:
  void setDataSource(const PreviewSource* newSource) override { source = newSource; }

  // Queries its source at once, as a panel may.
  void makeKeyAndOrderFront() override {
    ++timesInFront;
    if (source != nullptr && source->numberOfPreviewItems() > 0)
      shown.push_back(source->previewItemAt(0));
  }

  const PreviewSource* source = nullptr;
  int timesInFront = 0;
  std::vector<std::string> shown;  // the URLs, the latest one last
};

}  // namespace tessaly
