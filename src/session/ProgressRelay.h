// Carries the progress of a walk to the main thread. A walk may report thousands of times while the
// main thread draws one frame, so only the newest value of each kind is delivered.
//
// line() and percent() may be called from any thread. The receiver is called on the main queue,
// also after the relay is destroyed, but before anything that the walk posts after its last report.
#pragma once

#include <functional>
#include <string>

#include "platform/Dispatch.h"
#include "session/NewestValue.h"

namespace tessaly {

class ProgressRelay {
 public:
  struct Receiver {
    std::function<void(const std::string& line)> line;
    std::function<void(double fraction)> percent;
  };

  // `dispatch` must outlive the relay.
  ProgressRelay(Dispatch& dispatch, Receiver receiver);

  void line(const std::string& line) { line_.put(line); }
  void percent(double fraction) { percent_.put(fraction); }

 private:
  NewestValue<std::string> line_;
  NewestValue<double> percent_;
};

}  // namespace tessaly
