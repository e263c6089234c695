// A pasteboard in memory.
#pragma once

#include <optional>
#include <string>

#include "platform/Pasteboard.h"

namespace tessaly {

class FakePasteboard final : public Pasteboard {
 public:
  void setText(const std::string& newText) override { text = newText; }

  std::optional<std::string> text;
};

}  // namespace tessaly
