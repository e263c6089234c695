// The parameters of reading a preview, besides the file.
#pragma once

#include <functional>

#include "app/preview/PreviewContent.h"
#include "app/preview/PreviewLimits.h"

namespace tessaly {

struct PreviewRequest {
  PreviewLimits limits;
  // Polled on the reading thread; empty: never cancelled.
  std::function<bool()> cancelled;

  bool isCancelled() const { return cancelled && cancelled(); }
};

// The result of a reader. FactsOnly if cancelled.
using PreviewBody = decltype(PreviewContent::body);

}  // namespace tessaly
