// Ends the program. For the user it ends at once, and a new instance gets a window whatever this
// one still has to do; the process ends a moment later, whatever its threads do:
//
//   1. the windows are hidden
//   2. the program leaves the desktop: hot key, status item
//   3. it stops writing files that the next instance reads, and then lets that start
//   4. background work is cancelled
//   5. cancelled work has a moment to end, and a move to the Trash with its record longer
//   6. the process ends, without destructors
//
// A thread that hangs in the kernel may keep the process. It shows and locks nothing then.
//
// Main thread only.
#pragma once

#include <chrono>
#include <functional>
#include <optional>

namespace tessaly {

class Quitting {
 public:
  using Time = std::chrono::steady_clock::time_point;

  // No step waits for another program.
  struct Steps {
    std::function<void()> hideWindows;
    std::function<void()> leaveDesktop;
    std::function<void()> endWriting;
    std::function<void()> giveUpInstance;
    std::function<void()> giveUpWork;
    std::function<bool()> isBusy;    // whether cancelled work still runs
    std::function<bool()> isMoving;  // whether this includes a move to the Trash
    std::function<void()> pause;     // waits a few milliseconds
    std::function<void(int status)> exit;
    std::function<Time()> now = [] { return std::chrono::steady_clock::now(); };
  };

  static constexpr std::chrono::milliseconds patience{200};
  // A busy disk needs some time to store a record; a lost one never answers. If the process ends
  // during the move, the item is still in one place or the other, possibly with an extra record.
  static constexpr std::chrono::milliseconds patienceForMoves{10000};

  explicit Quitting(Steps steps);

  // Ends the program. Does nothing if this has begun already.
  void run(int status);

  // The same after the display is gone, with everything on it. If that is noticed within run(),
  // this does the remaining steps.
  void runWithoutDisplay(int status);

 private:
  void leave(int status);
  void waitAndExit(int status);

  Steps steps_;
  bool hasBegun_ = false;
  std::optional<Time> waitsSince_;
};

}  // namespace tessaly
