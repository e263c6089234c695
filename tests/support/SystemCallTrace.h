// Runs a piece of code in a forked child, system call by system call, to see what it asks of the
// system, to end it at any of them, to have any of them fail, and to do something else meanwhile.
// So a test can show that work which must be all or nothing is just that, wherever it is
// interrupted:
//
//   for (std::size_t stop = 1;; ++stop) {
//     ...put everything in its place...
//     const TracedRun run = SystemCallTrace::killedAt(stop, body);
//     ...see that all is as it was, or all is done...
//     if (run.end != TracedRun::End::killed) break;
//   }
//
// Only the thread that runs the body is followed. No assertions of the test framework in a body:
// they would be lost in the child.
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
    killed,    // by us, where we were asked to
    crashed,   // in any other way, which `told` describes
  };

  End end = End::crashed;
  std::string told;         // what the body returned, if it did
  std::vector<long> calls;  // the body's calls in order, by their numbers in <sys/syscall.h>
  long failedCall = -1;     // the number of the one that was made to fail, where that came to be
  bool wasInterrupted = false;  // the stop came at which something else was to be done
};

namespace SystemCallTrace {

// Why runs cannot be traced here; empty where they can. For GTEST_SKIP.
std::string obstacle();

// Runs the body to its end.
TracedRun of(const std::function<std::string()>& body);

// Calls by their numbers, and the errno that each of them fails with, whenever it is made.
using Refusals = std::map<long, int>;

// Kills the child at its `stop`-th stop, counted from 1. Each call has two: one before the system
// begins it, one after.
TracedRun killedAt(std::size_t stop, const std::function<std::string()>& body,
                   const Refusals& refusals = {});

// Lets the `call`-th call, counted from 1, fail with the errno `code`, without its having any
// effect. Calls for memory and for taking turns are not counted, since a program can do little
// without them and its sanitizers make them too.
TracedRun failingAt(std::size_t call, int code, const std::function<std::string()>& body,
                    const Refusals& refusals = {});

// Lets the `nth` of the calls of this number, counted from 1, fail in the same way.
TracedRun failingNth(long number, std::size_t nth, int code,
                     const std::function<std::string()>& body);

// What the system is to have answered: each successful call of this number finds `bytes` at
// `offset` of what its argument points to, counted from 0.
struct Answer {
  long number = -1;
  std::size_t argument = 0;
  std::size_t offset = 0;
  std::string bytes;
};

TracedRun answering(const Answer& answer, const std::function<std::string()>& body);

// Refuses calls as a system would that does not have them.
TracedRun refusing(const Refusals& refusals, const std::function<std::string()>& body);

// Does `act` in this process, another one than the child, while the child waits at its `stop`-th
// stop; then lets it go on.
TracedRun interruptedAt(std::size_t stop, const std::function<void()>& act,
                        const std::function<std::string()>& body, const Refusals& refusals = {});

}  // namespace SystemCallTrace
}  // namespace tessaly
