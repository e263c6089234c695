#include "app/preview/ReaderProgram.h"

#include <csignal>
#include <utility>

#include "app/preview/AnsweredBody.h"
#include "app/preview/PreviewFailures.h"
#include "app/preview/ReaderAnswer.h"
#include "platform/Deadline.h"

namespace tessaly {

namespace {

using AnsweredBody::End;

// A request is short, and a running process reads it at once.
constexpr double secondsToAsk = 2;
constexpr double betweenPolls = 0.02;

struct Answer {
  std::string bytes;
  End end = End::itself;
};

// If the process does not end in time, another thread reaps it.
void end(Process& process, double seconds = betweenPolls) {
  process.kill();
  process.waitUntil(Deadline::after(seconds));
}

bool hasLacked(const std::optional<Process::Exit>& exit) {
  return exit && (exit->status == ReaderAnswer::outOfMemory || exit->signal == SIGXCPU ||
                  exit->signal == SIGALRM);
}

// Absent once the request is cancelled.
std::optional<Answer> answerOf(Process& process, const PreviewRequest& request) {
  Answer answer;
  const std::size_t most = AnsweredBody::mostBytes(request.limits);
  const Deadline over = Deadline::after(request.limits.seconds);
  while (true) {
    if (request.isCancelled()) return std::nullopt;
    const bool isOver = over.hasPassed();
    if (isOver || answer.bytes.size() >= most) {
      answer.end = isOver ? End::late : End::overlong;
      return answer;
    }
    if (process.readMore(answer.bytes, most - answer.bytes.size(), Deadline::after(betweenPolls)) ==
        Process::Reading::end) {
      // The process has closed its output, and only needs to exit.
      while (!process.waitUntil(Deadline::after(betweenPolls))) {
        if (request.isCancelled() || over.hasPassed()) break;
      }
      if (hasLacked(process.exit())) answer.end = End::lack;
      return answer;
    }
  }
}

}  // namespace

ReaderProgram::ReaderProgram(std::string path) : path_(std::move(path)) {}

ReaderProgram::~ReaderProgram() {
  if (waiting_) end(*waiting_, 1);
}

void ReaderProgram::warmUp() {
  {
    const std::lock_guard lock(mutex_);
    if (waiting_ && !waiting_->waitUntil(Deadline::after(0))) return;
  }
  std::optional<Process> process = launched();
  if (!process) return;
  {
    const std::lock_guard lock(mutex_);
    std::swap(waiting_, process);
  }
  // Another thread was faster, or the previous process has died.
  if (process) process->kill();
}

std::optional<PreviewBody> ReaderProgram::read(const HeldItem& file, ReaderRequest::Wanted wanted,
                                               std::string_view format,
                                               const PreviewRequest& request) {
  const Result<std::string> path = file.ownPath();
  if (!path) return PreviewFailures::of(path.error(), false);
  const std::optional<std::string> question = ReaderRequest{.wanted = wanted,
                                                            .format = std::string(format),
                                                            .path = path.value(),
                                                            .identity = file.facts().identity,
                                                            .limits = request.limits}
                                                  .encoded();
  if (request.isCancelled()) return FactsOnly{};
  std::optional<Process> process = question ? asked(*question) : std::nullopt;
  if (!process) return AnsweredBody::ofNone(wanted);
  warmUp();
  const std::optional<Answer> answer = answerOf(*process, request);
  end(*process);
  if (!answer) return FactsOnly{};
  return AnsweredBody::of(answer->bytes, answer->end, wanted, request.limits);
}

std::optional<Process> ReaderProgram::launched() const {
  Result<Process> process = Process::launch({.path = path_,
                                             .cwd = "/",
                                             .output = Process::Stream::captured,
                                             .error = Process::Stream::discarded,
                                             .input = Process::Stream::captured});
  return process ? std::optional(std::move(process).value()) : std::nullopt;
}

std::optional<Process> ReaderProgram::takeWaiting() {
  const std::lock_guard lock(mutex_);
  return std::exchange(waiting_, std::nullopt);
}

// The waiting process may have been killed from outside.
std::optional<Process> ReaderProgram::asked(const std::string& question) {
  std::optional<Process> process = takeWaiting();
  for (const bool isFirst : {true, false}) {
    if (!process && !(process = launched())) return std::nullopt;
    const bool isAlive = !process->waitUntil(Deadline::after(0));
    if (isAlive && process->writeInput(question, Deadline::after(secondsToAsk))) return process;
    end(*process);
    if (isFirst) process.reset();
  }
  return std::nullopt;
}

}  // namespace tessaly
