#include "app/desktop/WindowStart.h"

#include <utility>

#include "app/desktop/WindowPolicy.h"

namespace tessaly {

WindowStart::WindowStart(Dispatch& dispatch, StatusBarExtra& extra, Services services)
    : dispatch_(dispatch), extra_(extra), services_(std::move(services)) {
  extra_.setPresenceChanged([this] { followPresence(); });
  followPresence();
}

WindowStart::~WindowStart() {
  extra_.setPresenceChanged({});
}

void WindowStart::begin(bool startHidden) {
  startHidden_ = startHidden;
  isSettled_ = false;
  decide();
  if (isSettled_) return;
  dispatch_.after(patience, Dispatch::Queue::main, [weakSelf = std::weak_ptr(self_)] {
    const auto self = weakSelf.lock();
    if (!self) return;
    (*self)->hasWaited_ = true;
    (*self)->decide();
  });
}

void WindowStart::followPresence() {
  services_.setQuitsOnClose(WindowPolicy::quitsOnClose(extra_.presence()));
  decide();
}

void WindowStart::decide() {
  if (isSettled_) return;
  const auto start = WindowPolicy::atStart(startHidden_, extra_.presence(), hasWaited_);
  if (start == WindowPolicy::Start::wait) return;
  isSettled_ = true;
  if (start == WindowPolicy::Start::show) services_.show();
}

}  // namespace tessaly
