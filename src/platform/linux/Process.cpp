#include "platform/Process.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/process/Pipe.h"
#include "platform/linux/process/Reading.h"
#include "platform/linux/process/Reaper.h"
#include "platform/linux/process/Spawn.h"

namespace tessaly {

struct Process::State {
  process::Child child;
  FileDescriptor input;
  FileDescriptor output;
  FileDescriptor error;
  FileDescriptor sampled;
  std::string sample;
  std::optional<Exit> exit;

  State() = default;
  State(const State&) = delete;
  State& operator=(const State&) = delete;
  ~State() {
    if (child.number < 0 || exit) return;
    // Closed first, since the reaper may need a descriptor.
    input = FileDescriptor();
    output = FileDescriptor();
    error = FileDescriptor();
    sampled = FileDescriptor();
    process::Reaper::instance().adopt(std::move(child));
  }
};

Process::Process(std::unique_ptr<State> state) : state_(std::move(state)) {}
Process::~Process() = default;
Process::Process(Process&& other) noexcept = default;
Process& Process::operator=(Process&& other) noexcept = default;

Result<Process> Process::launch(const Launch& launch) {
  // Children that have ended still count toward the user's limit.
  process::Reaper::instance().catchUp();
  auto state = std::make_unique<State>();
  process::Ends its;
  if (launch.input == Stream::captured) {
    Result<process::Pipe> pipe = process::Pipe::makeOfSockets(launch.path);
    if (!pipe) return pipe.error();
    state->input = std::move(pipe.value().writing);
    its.input = std::move(pipe.value().reading);
  }
  const auto connect = [&](FileDescriptor& ours, FileDescriptor& end) -> Outcome {
    Result<process::Pipe> pipe = process::Pipe::make(launch.path);
    if (!pipe) return pipe.error();
    ours = std::move(pipe.value().reading);
    end = std::move(pipe.value().writing);
    // Affects only this process's end: each end has its own flags.
    fcntl(ours.get(), F_SETFL, O_NONBLOCK);
    return succeeded();
  };
  if (launch.output == Stream::captured) {
    if (Outcome made = connect(state->output, its.output); !made) return made.error();
  }
  if (launch.error == Stream::captured) {
    if (Outcome made = connect(state->error, its.error); !made) return made.error();
  }
  if (launch.output == Stream::sampled) {
    if (Outcome made = connect(state->sampled, its.output); !made) return made.error();
  }
  if (launch.error == Stream::sampled && !state->sampled) {
    if (Outcome made = connect(state->sampled, its.error); !made) return made.error();
  } else if (launch.error == Stream::sampled) {
    its.error = FileDescriptor(fcntl(its.output.get(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
    if (!its.error) return SystemError::fromErrno(errno, launch.path);
  }

  Result<process::Child> child = process::spawn(launch, std::move(its));
  if (!child) return child.error();
  state->child = std::move(child).value();
  return Process(std::move(state));
}

bool Process::waitUntil(Deadline deadline) {
  while (!state_->exit) {
    const int handle = state_->child.handle.get();
    if (!process::waitUntilReadable(handle, state_->sampled.get(), deadline)) return false;
    process::takeSample(state_->sampled, state_->sample, mostSampled);
    state_->exit = process::reaped(state_->child.number);
    if (state_->exit) {
      // output from just before its end
      process::takeSample(state_->sampled, state_->sample, mostSampled);
    } else if (deadline.hasPassed()) {
      return false;  // even if there is always something to read
    }
  }
  return true;
}

std::optional<Process::Exit> Process::exit() const {
  return state_->exit;
}

void Process::terminate() {
  if (!state_->exit) process::send(SIGTERM, state_->child);
}

void Process::kill() {
  if (!state_->exit) process::send(SIGKILL, state_->child);
}

const std::string& Process::sample() const {
  return state_->sample;
}

bool Process::writeInput(std::string_view bytes, Deadline deadline) {
  return process::sendAll(state_->input.get(), bytes, deadline);
}

Process::Reading Process::readMore(std::string& text, std::size_t most, Deadline deadline) {
  return process::readMore(state_->output.get(), text, most, deadline);
}

std::string Process::readOutput(Deadline deadline) {
  const int pipe = state_->output.get();
  if (pipe < 0) return {};
  // After the program has exited, at most this much in the pipe can be its own output.
  const int room = fcntl(pipe, F_GETPIPE_SZ);
  return process::readUntil(pipe, deadline, room > 0 ? static_cast<std::size_t>(room) : 0);
}

}  // namespace tessaly
