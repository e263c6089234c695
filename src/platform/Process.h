// A program of the system that runs beside this one: started by its path, without a shell, waited
// for until a deadline, asked to end.
//
// It gets none of our file descriptors but standard input, output and error; no signal is blocked
// or ignored in it. A Process belongs to one thread at a time; different ones are independent, and
// any number may be started at once.
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
    inherited,  // ours
    captured,   // a channel of which only we have the other end
    discarded,  // nothing to read, and what is written is lost
    // For output: a pipe that is read while waitUntil() waits, so that the program may write
    // without end; only the beginning is kept. Where both streams are sampled, they share it.
    sampled,
  };

  struct Launch {
    std::string path;                     // of the executable, absolute
    std::vector<std::string> args = {};   // without its own name; bytes, handed over as they are
    std::optional<std::string> cwd = {};  // its working directory; ours when absent
    // Variables that it gets beside those of our environment, or in their place.
    std::vector<std::pair<std::string, std::string>> environment = {};
    Stream output = Stream::inherited;
    Stream error = Stream::inherited;
    Stream input = Stream::inherited;
    // For what a person goes on working with: in a session of its own, so that it outlives us and
    // our terminal, with nothing to read, and with its words lost where they are not captured.
    bool isDetached = false;
  };

  // How it ended.
  struct Exit {
    int status = 0;  // what it returned, 0 to 255; meaningless after a signal
    int signal = 0;  // the number of the signal that ended it, or 0

    bool isSuccess() const { return status == 0 && signal == 0; }
    friend bool operator==(const Exit&, const Exit&) = default;
  };

  // Starts the program. Gives the reason, with the path as given, when it does not start: it is not
  // there, may not be run or is no program, the working directory cannot be entered, or this
  // process is out of descriptors or memory. Nothing is left behind then.
  static Result<Process> launch(const Launch& launch);

  // Does not wait: a program that still runs goes on by itself, and is seen off once it ends. Its
  // captured streams are closed, so that it finds the end of its input.
  ~Process();
  Process(Process&& other) noexcept;
  Process& operator=(Process&& other) noexcept;

  // Blocks until the program has exited, and says so, or until `deadline` has passed.
  bool waitUntil(Deadline deadline);

  // How it ended, once waitUntil() has said that it has.
  std::optional<Exit> exit() const;

  // Asks it to end, which it may refuse. Does nothing once it has exited.
  void terminate();

  // Ends it, which it cannot refuse; waitUntil() says when that is done. Does nothing once it has
  // exited.
  void kill();

  // Writes to its captured input. False when the program does not read any more, or `deadline`
  // has passed before it has taken all of it.
  bool writeInput(std::string_view bytes, Deadline deadline);

  enum class Reading : std::uint8_t { more, end, late };

  // Waits for what it writes to its captured output, and appends what is there to `text`, `most`
  // bytes at most. `end` once nobody can write any more, `late` when `deadline` passes before
  // there is anything.
  Reading readMore(std::string& text, std::size_t most, Deadline deadline);

  // What it has written to its captured output. To be called once, after it has exited: what it
  // left in the pipe is given whatever the deadline. Programs that it has started in turn may hold
  // the pipe open and write on; theirs is read up to the end too, but not past `deadline`, and
  // not beyond 64 MiB.
  std::string readOutput(Deadline deadline);

  // The first of what it has written to its sampled streams, in the order of writing.
  const std::string& sample() const;
  static constexpr std::size_t mostSampled = 4096;  // bytes

 private:
  struct State;
  explicit Process(std::unique_ptr<State> state);

  std::unique_ptr<State> state_;
};

}  // namespace tessaly
