// The only way in which engines start a tool of the system and read its output.
//
// Blocks its caller, so it is for worker threads. Safe from many threads at once.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/Deadline.h"
#include "platform/Process.h"

namespace tessaly {

// The reason why a tool gave no output. what() describes it in words.
class ToolError : public std::runtime_error {
 public:
  ToolError(std::string domain, int code, const std::string& description)
      : std::runtime_error(description), domain_(std::move(domain)), code_(code) {}

  const std::string& domain() const { return domain_; }
  int code() const { return code_; }

  // Whether the tool still ran at its time limit.
  bool isTimeOut() const { return domain_ == ownDomain && code_ == timedOut; }
  // Whether it was ended because of a cancellation.
  bool isGivenUp() const { return domain_ == ownDomain && code_ == givenUp; }

  static constexpr const char* ownDomain = "Marrow";
  static constexpr int timedOut = 1;
  static constexpr int givenUp = 2;

 private:
  std::string domain_;
  int code_;
};

namespace Shell {

// Stand-in for run() in engines that take one: takes a tool's absolute path, its arguments and its
// time limit in seconds, and returns its output. May throw.
using Run = std::function<std::string(const std::string& path, const std::vector<std::string>& args,
                                      double timeout)>;

// Converts a number of seconds to the deadline of a wait: Deadline::after. A test passes another
// function to make a tool late or not, independent of the clock.
using After = std::function<Deadline(double seconds)>;

// Starts the tool at absolute `path`, without a shell, waits for it to exit, and returns its
// standard output. Its exit status does not matter. Output that is not UTF-8 gives the empty text.
// The output is read only after the tool has exited, so a tool that prints more than a pipe holds
// runs into the time-out; the same holds for its standard error, which goes to a pipe that is never
// read. If a process that the tool has started still holds its output open, reading goes on until
// the time-out, and the output up to then is returned.
//
// Tools run in the C locale, so that their output does not depend on the user's language; names
// pass through them as bytes.
//
// Throws ToolError: in the domain "POSIX", with errno as code, when the tool does not start; in the
// domain "Marrow", with code 1, when it still runs after `timeout` seconds. It is then asked to
// terminate, and waited for up to one more second. Any `timeout` is allowed: one that is not above
// 0 ends the call at once, one beyond some decades means no limit.
std::string run(const std::string& path, const std::vector<std::string>& args, double timeout,
                const std::optional<std::string>& cwd = std::nullopt,
                const After& after = Deadline::after);

// run() for work that may be cancelled: the returned function calls `isCancelled` every 25 ms while
// the tool runs, and before it starts it. Once it has returned true, the tool is ended within a
// tenth of a second, and ToolError is thrown in the domain "Marrow" with code 2. Thread-safe like
// `isCancelled`.
Run cancellable(std::function<bool()> isCancelled, const After& after = Deadline::after);

// How a tool ended whose exit status is wanted and whose output is not.
struct Ending {
  Process::Exit exit;
  std::string words;  // the beginning of its output and standard error together; bytes
};

// Like run(), for a tool that may run long and print much: its output never blocks it. Calls
// `isCancelled` every 25 ms while the tool runs.
//
// Throws ToolError like run(), and in the domain "Marrow", with code 2, once `isCancelled` has
// returned true. The tool has ended by then, unless the kernel blocks it: if it ignores the request
// to terminate, it is killed after a second, or after a tenth of a second if it was cancelled.
Ending runToEnd(const std::string& path, const std::vector<std::string>& args, double timeout,
                const std::optional<std::string>& cwd,
                const std::function<bool()>& isCancelled = {},
                const After& after = Deadline::after);

// Bytes on disk of the tree at `at`, as du counts them; 0 when du fails. Never throws. `run`
// replaces run() unless it is empty.
std::int64_t duBytes(const std::string& at, const Run& run = {});

// The bytes in the output of "du -k" for one path: a count of kibibytes, then the path. 0 when
// there is no such count, or it does not fit.
std::int64_t parseDu(std::string_view text);

}  // namespace Shell

}  // namespace tessaly
