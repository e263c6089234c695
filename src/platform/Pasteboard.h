// The general pasteboard. Main thread only.
#pragma once

#include <string>

namespace tessaly {

class Pasteboard {
 public:
  virtual ~Pasteboard() = default;

  // Replaces the contents of the pasteboard by this text. Bytes that are not UTF-8 are kept if the
  // desktop supports bytes, and become replacement characters elsewhere.
  virtual void setText(const std::string& text) = 0;
};

}  // namespace tessaly
