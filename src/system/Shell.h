// The one door through which engines start a tool of the system and read what it prints.
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

// Why a tool gave no output. what() is the description in words.
class ToolError : public std::runtime_error {
 public:
  ToolError(std::string domain, int code, const std::string& description)
      : std::runtime_error(description), domain_(std::move(domain)), code_(code) {}

  const std::string& domain() const { return domain_; }
  int code() const { return code_; }

  // Whether the tool still ran when its time was over.
  bool isTimeOut() const { return domain_ == ownDomain && code_ == timedOut; }
  // Whether it was ended because nobody wanted its work any more.
  bool isGivenUp() const { return domain_ == ownDomain && code_ == givenUp; }

  static constexpr const char* ownDomain = "Marrow";
  static constexpr int timedOut = 1;
  static constexpr int givenUp = 2;

 private:
  std::string domain_;
  int code_;
};

namespace Shell {

// Stands in for run() in engines that take one: from a tool's absolute path, its arguments and the
// seconds that it may take to what it printed. May throw.
using Run = std::function<std::string(const std::string& path, const std::vector<std::string>& args,
                                      double timeout)>;

// From a number of seconds to the moment until which a tool is waited for: Deadline::after. Another
// one lets a tool be late, or not, whatever the time.
using After = std::function<Deadline(double seconds)>;

// Starts the tool at absolute `path`, without a shell, waits for it to exit, and returns its
// standard output. Its exit status does not matter. Output that is not UTF-8 gives the empty text.
// What a tool prints is read only once it has exited, so one that prints more than a pipe holds
// runs into the time-out, and so does one that complains as much: its standard error is caught in a
// pipe that nobody reads. Where something that the tool has started still holds its output, that is
// read on until the time-out, and what has come by then is returned.
//
// Tools run in the C locale, so that what they print does not depend on the user's language; names
// pass through them as bytes.
//
// Throws ToolError: in the domain "POSIX", with errno as code, when the tool does not start; in the
// domain "Marrow", with code 1, when it still runs after `timeout` seconds. It is then asked to
// terminate and has one more second to do so. Any `timeout` is allowed: one that is not above 0
// ends the call at once, one beyond some decades is none.
std::string run(const std::string& path, const std::vector<std::string>& args, double timeout,
                const std::optional<std::string>& cwd = std::nullopt,
                const After& after = Deadline::after);

// How a tool ended whose output is not wanted, but its exit status is.
struct Ending {
  Process::Exit exit;
  std::string words;  // the first of all that it wrote, to its output or its standard error; bytes
};

// Like run(), for a tool that may take long and complain about much: nothing that it writes holds
// it up. Asks `isCancelled` every 25 ms while the tool runs.
//
// Throws ToolError like run(), and in the domain "Marrow", with code 2, once `isCancelled` has said
// so. The tool has ended then in each case: where asking it does not help, it is killed, after a
// second, or after a tenth of that where it was cancelled.
Ending runToEnd(const std::string& path, const std::vector<std::string>& args, double timeout,
                const std::optional<std::string>& cwd,
                const std::function<bool()>& isCancelled = {},
                const After& after = Deadline::after);

// Bytes that the tree at `at` takes on disk, as du counts them; 0 when du cannot tell. Never
// throws. `run` stands in for run() when it is not empty.
std::int64_t duBytes(const std::string& at, const Run& run = {});

// The bytes in what du -k printed for one path: a count of kibibytes, then the path. 0 when there
// is no such count, or it does not fit.
std::int64_t parseDu(std::string_view text);

}  // namespace Shell

}  // namespace tessaly
