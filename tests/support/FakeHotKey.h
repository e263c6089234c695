// A hot key that a test can press.
#pragma once

#include <functional>
#include <utility>

#include "platform/GlobalHotKey.h"

namespace tessaly {

class FakeHotKey final : public GlobalHotKey {
 public:
  void install(std::function<void()> pressed) override { press = std::move(pressed); }

  std::function<void()> press;
};

}  // namespace tessaly
