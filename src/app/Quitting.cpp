#include "app/Quitting.h"

#include <utility>

namespace tessaly {

Quitting::Quitting(Steps steps) : steps_(std::move(steps)) {}

void Quitting::run(int status) {
  if (std::exchange(hasBegun_, true)) return;
  steps_.hideWindows();
  steps_.leaveDesktop();
  leave(status);
}

void Quitting::runWithoutDisplay(int status) {
  if (std::exchange(hasBegun_, true)) return;
  leave(status);
}

void Quitting::leave(int status) {
  steps_.endWriting();
  steps_.giveUpInstance();
  steps_.giveUpWork();
  wait();
  steps_.exit(status);
}

void Quitting::wait() const {
  const Time begin = steps_.now();
  while (steps_.isBusy()) {
    const auto passed = steps_.now() - begin;
    if (passed >= patienceForMoves || (passed >= patience && !steps_.isMoving())) return;
    steps_.pause();
  }
}

}  // namespace tessaly
