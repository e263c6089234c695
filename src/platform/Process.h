// A program of the system that runs beside this one: started by its path, without a shell; waited
// for until a deadline; asked to end.
//
// It inherits no file descriptors except standard input, output and error; no signal is blocked or
// ignored in it. Use a Process on one thread at a time; different ones are independent, and any
// number may be started at once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/Deadline.h"
#include "platform/SystemError.h"

namespace tessaly {

class Process {
 public:
  enum class Stream {
    inherited,  // the stream of this process
    captured,   // a channel to this process
    discarded,  // empty input; output is dropped
    // For output: a pipe that is read while waitUntil() waits, so the program may write without
    // limit; only the beginning is kept. If both streams are sampled, they share it.
    sampled,
  };

  struct Launch {
    std::string path;                     // of the executable, absolute
    std::vector<std::string> args = {};   // without the program's own name; bytes, passed on
                                          // unchanged
    std::optional<std::string> cwd = {};  // working directory; absent: that of this process
    // Variables added to this process's environment, or replacing those of the same name.
    std::vector<std::pair<std::string, std::string>> environment = {};
    Stream output = Stream::inherited;
    Stream error = Stream::inherited;
    Stream input = Stream::inherited;
    // For programs that the user goes on working with: runs in a session of its own, so that it
    // outlives this process and its terminal, with empty input and, unless captured, with its
    // output dropped.
    bool isDetached = false;
  };

  // How the program ended.
  struct Exit {
    int status = 0;  // its exit status, 0 to 255; meaningless after a signal
    int signal = 0;  // the number of the signal that ended it, or 0

    bool isSuccess() const { return status == 0 && signal == 0; }
    friend bool operator==(const Exit&, const Exit&) = default;
  };

  // Starts the program. The error, with the path as given, is the reason why it does not start: it
  // does not exist, may not be run or is not a program, the working directory cannot be entered, or
  // this process is out of descriptors or memory. Nothing is left behind then.
  static Result<Process> launch(const Launch& launch);

  // Does not wait: a program that still runs goes on, and is reaped once it ends. Its captured
  // streams are closed, so it finds the end of its input.
  ~Process();
  Process(Process&& other) noexcept;
  Process& operator=(Process&& other) noexcept;

  // Blocks until the program has exited, and returns true, or until `deadline` has passed.
  bool waitUntil(Deadline deadline);

  // How it ended, once waitUntil() has returned true.
  std::optional<Exit> exit() const;

  // Asks it to end (SIGTERM), which it may ignore. Does nothing once it has exited.
  void terminate();

  // Ends it (SIGKILL), which it cannot ignore; waitUntil() reports when it has ended. Does nothing
  // once it has exited.
  void kill();

  // Writes to its captured input. False if the program stops reading, or if `deadline` passes
  // before it has taken all bytes.
  bool writeInput(std::string_view bytes, Deadline deadline);

  enum class Reading : std::uint8_t { more, end, late };

  // Waits for its captured output, and appends the available bytes to `text`, at most `most`. `end`
  // once no process can write any more, `late` if `deadline` passes before there is anything.
  Reading readMore(std::string& text, std::size_t most, Deadline deadline);

  // Its captured output. Call it once, after it has exited: the content of the pipe is returned
  // whatever the deadline. Programs that it has started may hold the pipe open and write on; their
  // output is read to the end too, but not past `deadline`, and not beyond 64 MiB.
  std::string readOutput(Deadline deadline);

  // The beginning of its sampled streams, in the order of writing.
  const std::string& sample() const;
  static constexpr std::size_t mostSampled = 4096;  // bytes

 private:
  struct State;
  explicit Process(std::unique_ptr<State> state);

  std::unique_ptr<State> state_;
};

}  // namespace tessaly
