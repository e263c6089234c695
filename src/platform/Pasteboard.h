// The general pasteboard. Main thread only.
#pragma once

#include <string>

namespace tessaly {

class Pasteboard {
 public:
  virtual ~Pasteboard() = default;

  // Replaces whatever the pasteboard holds by this text. Bytes that are not UTF-8 are carried as
  // they are where the desktop can carry bytes, and as replacement characters elsewhere.
  virtual void setText(const std::string& text) = 0;
};

}  // namespace tessaly
