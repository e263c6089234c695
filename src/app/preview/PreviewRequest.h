// What a reader of a preview is told besides the file.
#pragma once

#include <functional>

#include "app/preview/PreviewContent.h"
#include "app/preview/PreviewLimits.h"

namespace tessaly {

struct PreviewRequest {
  PreviewLimits limits;
  // Polled on the reading thread; empty for never.
  std::function<bool()> cancelled;

  bool isCancelled() const { return cancelled && cancelled(); }
};

// What a reader makes of a file. A cancelled one gives FactsOnly.
using PreviewBody = decltype(PreviewContent::body);

}  // namespace tessaly
