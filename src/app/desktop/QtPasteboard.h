// The pasteboard on the desktop's clipboard. Main thread only.
#pragma once

#include "platform/Pasteboard.h"

namespace tessaly {

class QtPasteboard : public Pasteboard {
 public:
  void setText(const std::string& text) override;
};

}  // namespace tessaly
