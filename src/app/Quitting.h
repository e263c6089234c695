// How the program ends. It is gone for the user at once, and a new start gets a window of its own
// whatever this one still has to do; the process follows a moment later, whatever its threads do:
//
//   1. its windows go
//   2. it leaves the desktop: hot key, status item
//   3. it writes nothing more that the next start would read, and only then makes room for it
//   4. its work is given up
//   5. what ends by itself has a moment to do so, and a move to the Trash that is under way, with
//      its record, has longer
//   6. the process ends, and no destructor runs
//
// A thread that the kernel holds may keep the process from going away. It shows and locks nothing.
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

  // None of them waits for another program.
  struct Steps {
    std::function<void()> hideWindows;
    std::function<void()> leaveDesktop;
    std::function<void()> endWriting;
    std::function<void()> giveUpInstance;
    std::function<void()> giveUpWork;
    std::function<bool()> isBusy;    // what was given up has not ended yet
    std::function<bool()> isMoving;  // of that, a move to the Trash
    std::function<void()> pause;     // lets a few milliseconds pass
    std::function<void(int status)> exit;
    std::function<Time()> now = [] { return std::chrono::steady_clock::now(); };
  };

  static constexpr std::chrono::milliseconds patience{200};
  // A disk that is busy takes its time to store a record; one that is gone never does. Without the
  // end of the move no item is lost: it is in one place or the other, but may have a record more.
  static constexpr std::chrono::milliseconds patienceForMoves{10000};

  explicit Quitting(Steps steps);

  // Ends the program. Does nothing where this has begun already.
  void run(int status);

  // The same where the display has gone, and all that was on it. Where that is found out within
  // run(), what is left of it is done here.
  void runWithoutDisplay(int status);

 private:
  void leave(int status);
  void waitAndExit(int status);

  Steps steps_;
  bool hasBegun_ = false;
  std::optional<Time> waitsSince_;
};

}  // namespace tessaly
