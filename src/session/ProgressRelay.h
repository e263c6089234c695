// Carries the progress of a walk to the main thread at a rate it can use. A walk may report
// thousands of times while the main thread draws one frame, so only the newest value of each kind
// is kept, and at most one update of each kind waits on the main queue.
//
// There is no timer. Each reported value is delivered by an update that is on the main queue
// already, so anything the walk posts after its last report runs after its last progress.
//
// line() and percent() may be called from any thread. The receiver is called on the main queue,
// also after the relay is destroyed.
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

  // `dispatch` must outlive the relay.
  ProgressRelay(Dispatch& dispatch, Receiver receiver);

  void line(const std::string& line);
  void percent(double fraction);

 private:
  struct Waiting;

  Dispatch& dispatch_;
  std::shared_ptr<Waiting> waiting_;
};

}  // namespace tessaly
