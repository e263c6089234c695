// Carries the progress of one walk to the main thread, as little of it as does any good: a walk may
// report thousands of times while the main thread draws one frame, so only the newest value of each
// sort is kept, and at most one update of each sort waits on the main queue.
//
// No timer is involved. Whatever was reported is delivered by an update that already stands on the
// main queue, so what the walk puts there after its last report comes after its last progress.
//
// line() and percent() may be called from any thread. The receiver is called on the main queue,
// also after the relay is gone.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/Dispatch.h"

namespace tessaly {

class ProgressRelay {
 public:
  struct Receiver {
    std::function<void(const std::string& line)> line;
    std::function<void(double fraction)> percent;
  };

  // `dispatch` outlives the relay.
  ProgressRelay(Dispatch& dispatch, Receiver receiver);

  void line(const std::string& line);
  void percent(double fraction);

 private:
  struct Waiting;

  Dispatch& dispatch_;
  std::shared_ptr<Waiting> waiting_;
};

}  // namespace tessaly
