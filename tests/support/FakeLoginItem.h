// A login item in memory.
#pragma once

#include "platform/LoginItem.h"

namespace tessaly {

class FakeLoginItem final : public LoginItem {
 public:
  bool isEnabled() const override { return enabled; }
  bool setEnabled(bool on) override {
    if (!refuses) enabled = on;
    return enabled == on;
  }

  bool enabled = false;
  bool refuses = false;  // refuses every change
};

}  // namespace tessaly
