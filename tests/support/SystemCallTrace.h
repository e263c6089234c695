// Runs a piece of code in a forked child, system call by system call: records the calls, kills the
// child at any of them, makes any of them fail, or does something else meanwhile. So a test can
// show that an operation is atomic, wherever it is interrupted:
//
//   for (std::size_t stop = 1;; ++stop) {
//     ...prepare the files...
//     const TracedRun run = SystemCallTrace::killedAt(stop, body);
//     ...check that nothing is done, or all of it...
//     if (run.end != TracedRun::End::killed) break;
//   }
//
// Only the thread that runs the body is traced. A body must not use assertions of the test
// framework: they would be lost in the child.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace tessaly {

struct TracedRun {
  enum class End {
    finished,  // the body returned
    killed,    // killed where it was requested
    crashed,   // ended in any other way, see `told`
  };

  End end = End::crashed;
  std::string told;             // what the body returned, if it did
  std::vector<long> calls;      // the system calls of the body in order, by their numbers in
                                // <sys/syscall.h>
  long failedCall = -1;         // the number of the call that was made to fail, if it was reached
  bool wasInterrupted = false;  // the stop for the interruption was reached
};

namespace SystemCallTrace {

// The reason why runs cannot be traced here; empty if they can. For GTEST_SKIP.
std::string obstacle();

// Runs the body to its end.
TracedRun of(const std::function<std::string()>& body);

// Numbers of calls, and the errno that each of them always fails with.
using Refusals = std::map<long, int>;

// Kills the child at its `stop`-th stop, counted from 1. Each call has two: before and after it.
// Calls for memory and synchronisation have none: how many there are depends on the memory that the
// process already has, so that a stop would not be at the same step in the next run.
TracedRun killedAt(std::size_t stop, const std::function<std::string()>& body,
                   const Refusals& refusals = {});

// Makes the `call`-th call, counted from 1, fail with the errno `code` and without effect. Calls
// for memory and synchronisation are not counted: a program can hardly do without them, and its
// sanitizers make them too.
TracedRun failingAt(std::size_t call, int code, const std::function<std::string()>& body,
                    const Refusals& refusals = {});

// Makes the `nth` call of this number, counted from 1, fail in the same way.
TracedRun failingNth(long number, std::size_t nth, int code,
                     const std::function<std::string()>& body);

// Makes the `nth` call of this number, counted from 1, report the errno `code` although it has had
// its effect, like a remote file system that loses an answer.
TracedRun misreportingNth(long number, std::size_t nth, int code,
                          const std::function<std::string()>& body);

// Changes the system's answers: after each successful call of this number, `bytes` replace those at
// `offset` (from 0) in the memory that its argument points to.
struct Answer {
  long number = -1;
  std::size_t argument = 0;
  std::size_t offset = 0;
  std::string bytes;
};

TracedRun answering(const Answer& answer, const std::function<std::string()>& body);

// Refuses calls like a system that lacks them.
TracedRun refusing(const Refusals& refusals, const std::function<std::string()>& body);

// Calls `act` in this process, the parent, while the child waits at its `stop`-th stop; then
// continues the child.
TracedRun interruptedAt(std::size_t stop, const std::function<void()>& act,
                        const std::function<std::string()>& body, const Refusals& refusals = {});

}  // namespace SystemCallTrace
}  // namespace tessaly
