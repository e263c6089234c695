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
  hasBegun_ = true;
  if (waitsSince_) {
    waitAndExit(status);
  } else {
    leave(status);
  }
}

void Quitting::leave(int status) {
  steps_.endWriting();
  steps_.giveUpInstance();
  steps_.giveUpWork();
  waitsSince_ = steps_.now();
  waitAndExit(status);
}

void Quitting::waitAndExit(int status) {
  while (steps_.isBusy()) {
    const auto passed = steps_.now() - *waitsSince_;
    if (passed >= patienceForMoves || (passed >= patience && !steps_.isMoving())) break;
    steps_.pause();
  }
  steps_.exit(status);
}

}  // namespace tessaly
