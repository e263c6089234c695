#include "support/SystemCallTrace.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <elf.h>
#include <exception>
#include <fcntl.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

#include "support/Descriptor.h"
#include "support/Needs.h"

namespace tessaly {
namespace {

// A system call that no body uses marks the begin and the end of the body.
constexpr long markedCall = SYS_getpgid;
constexpr int beginMark = -0x7E55A1;
constexpr int endMark = -0x7E55A2;

long trace(int request, pid_t child, std::uintptr_t address, std::uintptr_t data) {
  return ::syscall(SYS_ptrace, request, child, address, data);
}

std::uintptr_t at(void* data) {
  return reinterpret_cast<std::uintptr_t>(data);
}

#if defined(__x86_64__)
constexpr bool canChangeCalls = true;

bool skipCall(pid_t child) {
  user_regs_struct registers{};
  iovec part{&registers, sizeof registers};
  if (trace(PTRACE_GETREGSET, child, NT_PRSTATUS, at(&part)) != 0) return false;
  registers.orig_rax = static_cast<unsigned long long>(-1);
  return trace(PTRACE_SETREGSET, child, NT_PRSTATUS, at(&part)) == 0;
}

bool setResult(pid_t child, long result) {
  user_regs_struct registers{};
  iovec part{&registers, sizeof registers};
  if (trace(PTRACE_GETREGSET, child, NT_PRSTATUS, at(&part)) != 0) return false;
  registers.rax = static_cast<unsigned long long>(result);
  return trace(PTRACE_SETREGSET, child, NT_PRSTATUS, at(&part)) == 0;
}
#elif defined(__aarch64__)
constexpr bool canChangeCalls = true;

bool skipCall(pid_t child) {
  constexpr std::uintptr_t callNumber = 0x404;  // NT_ARM_SYSTEM_CALL
  int none = -1;
  iovec part{&none, sizeof none};
  return trace(PTRACE_SETREGSET, child, callNumber, at(&part)) == 0;
}

bool setResult(pid_t child, long result) {
  user_regs_struct registers{};
  iovec part{&registers, sizeof registers};
  if (trace(PTRACE_GETREGSET, child, NT_PRSTATUS, at(&part)) != 0) return false;
  registers.regs[0] = static_cast<unsigned long long>(result);
  return trace(PTRACE_SETREGSET, child, NT_PRSTATUS, at(&part)) == 0;
}
#else
constexpr bool canChangeCalls = false;
bool skipCall(pid_t) {
  return false;
}
bool setResult(pid_t, long) {
  return false;
}
#endif

bool isForMemoryOrTurns(long number) {
  constexpr std::array calls = {long{SYS_brk},     long{SYS_mmap},     long{SYS_munmap},
                                long{SYS_mremap},  long{SYS_mprotect}, long{SYS_madvise},
                                long{SYS_mincore}, long{SYS_futex},    long{SYS_sched_yield}};
  return std::find(calls.begin(), calls.end(), number) != calls.end();
}

[[noreturn]] void runChild(int out, const std::function<std::string()>& body) {
  if (trace(PTRACE_TRACEME, 0, 0, 0) != 0) _exit(3);
  ::raise(SIGSTOP);
  std::string told;
  ::syscall(markedCall, beginMark);
  try {
    told = body();
  } catch (const std::exception& error) {
    told = std::string("exception: ") + error.what();
  }
  ::syscall(markedCall, endMark);
  for (std::size_t done = 0; done < told.size();) {
    const ssize_t count = ::write(out, told.data() + done, told.size() - done);
    if (count <= 0) _exit(2);
    done += static_cast<std::size_t>(count);
  }
  _exit(0);
}

std::string readAll(int from) {
  std::string text;
  char buffer[4096];
  while (true) {
    const ssize_t count = ::read(from, buffer, sizeof buffer);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return text;
    text.append(buffer, static_cast<std::size_t>(count));
  }
}

// What to do to a run.
struct Plan {
  std::size_t killStop = 0;  // from 1; 0 for none
  std::size_t failCall = 0;
  long failNumber = -1;  // only calls of this number count for failCall; -1: all calls
  int code = 0;
  bool failsAfterwards = false;  // the call that fails has its effect
  SystemCallTrace::Refusals refusals = {};
  SystemCallTrace::Answer answer = {};
  std::size_t actStop = 0;
  std::function<void()> act = {};
};

// Traces one child from its first stop to the end of its body.
class Tracer {
 public:
  Tracer(pid_t child, const Plan& plan) : child_(child), plan_(plan) {}

  // A body that may finish continues untraced, to report its result.
  TracedRun run() {
    if (!follow() && run_.told.empty()) {
      run_.told = std::string("tracing failed: ") + std::strerror(errno);
    }
    if (run_.end == TracedRun::End::crashed && isThere_) {
      ::kill(child_, SIGKILL);
      while (isThere_ && wait()) {
      }
    }
    return std::move(run_);
  }

 private:
  enum class Phase { before, marking, body, after };

  // False if the system refuses tracing.
  bool follow() {
    constexpr auto options = PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL;
    if (!wait() || !isThere_ || trace(PTRACE_SETOPTIONS, child_, 0, options) != 0) return false;
    int signal = 0;
    while (phase_ != Phase::after) {
      const auto delivered = static_cast<std::uintptr_t>(signal);
      if (trace(PTRACE_SYSCALL, child_, 0, delivered) != 0 || !wait()) return false;
      if (!isThere_) return true;
      const bool isCall = WSTOPSIG(status_) == (SIGTRAP | 0x80);
      signal = isCall ? 0 : WSTOPSIG(status_);
      if (isCall && !noteStop()) return false;
    }
    return true;
  }

  bool noteStop() {
    __ptrace_syscall_info info{};
    if (trace(PTRACE_GET_SYSCALL_INFO, child_, sizeof info, at(&info)) <= 0) return false;
    const bool isBefore = info.op == PTRACE_SYSCALL_INFO_ENTRY;
    const bool isMark = isBefore && info.entry.nr == static_cast<std::uint64_t>(markedCall);
    const int mark = isMark ? static_cast<int>(info.entry.args[0]) : 0;
    switch (phase_) {
      case Phase::before:
        if (mark == beginMark) phase_ = Phase::marking;
        return true;
      case Phase::marking:
        phase_ = Phase::body;
        return true;
      case Phase::body:
        if (mark == endMark) return letFinish();
        if (isBefore ? !noteCall(info) : !noteReturn(info)) return false;
        if (isForMemoryOrTurns(run_.calls.back())) return true;
        ++stops_;
        if (stops_ == plan_.actStop) {
          plan_.act();
          run_.wasInterrupted = true;
        }
        return stops_ != plan_.killStop || killBody();
      case Phase::after:
        break;
    }
    return true;
  }

  bool noteCall(const __ptrace_syscall_info& info) {
    const auto number = static_cast<long>(info.entry.nr);
    answerPlace_ = number == plan_.answer.number
                       ? info.entry.args[plan_.answer.argument] + plan_.answer.offset
                       : 0;
    run_.calls.push_back(number);
    if (const auto refused = plan_.refusals.find(number); refused != plan_.refusals.end()) {
      return fail(number, refused->second);
    }
    const bool counts =
        plan_.failNumber < 0 ? !isForMemoryOrTurns(number) : number == plan_.failNumber;
    if (!counts || ++countedCalls_ != plan_.failCall) return true;
    return fail(number, plan_.code, plan_.failsAfterwards);
  }

  bool fail(long number, int code, bool afterwards = false) {
    run_.failedCall = number;
    failure_ = code;
    return afterwards || skipCall(child_);
  }

  bool noteReturn(const __ptrace_syscall_info& info) {
    const int code = std::exchange(failure_, 0);
    if (code != 0) return setResult(child_, -code);
    const std::uint64_t place = std::exchange(answerPlace_, 0);
    if (place == 0 || info.exit.is_error != 0) return true;
    const std::string& bytes = plan_.answer.bytes;
    const iovec from{const_cast<char*>(bytes.data()), bytes.size()};
    const iovec to{reinterpret_cast<void*>(place), bytes.size()};
    return ::process_vm_writev(child_, &from, 1, &to, 1, 0) == static_cast<ssize_t>(bytes.size());
  }

  bool letFinish() {
    phase_ = Phase::after;
    run_.end = TracedRun::End::finished;
    return trace(PTRACE_DETACH, child_, 0, 0) == 0;
  }

  bool killBody() {
    phase_ = Phase::after;
    run_.end = TracedRun::End::killed;
    ::kill(child_, SIGKILL);
    return wait();
  }

  // Waits for the next stop, or for the end of the child.
  bool wait() {
    while (::waitpid(child_, &status_, 0) < 0) {
      if (errno != EINTR) return false;
    }
    isThere_ = WIFSTOPPED(status_);
    if (!isThere_ && run_.end == TracedRun::End::crashed && run_.told.empty()) {
      run_.told = WIFSIGNALED(status_)
                      ? "child ended by signal " + std::to_string(WTERMSIG(status_))
                      : "child left with " + std::to_string(WEXITSTATUS(status_));
    }
    return true;
  }

  pid_t child_;
  Plan plan_;
  int status_ = 0;
  bool isThere_ = true;
  Phase phase_ = Phase::before;
  int failure_ = 0;                // of the current call
  std::uint64_t answerPlace_ = 0;  // address in the child, for the current call; 0: none
  std::size_t stops_ = 0;
  std::size_t countedCalls_ = 0;
  TracedRun run_;
};

TracedRun traced(const Plan& plan, const std::function<std::string()>& body) {
  TracedRun run;
  int ends[2];
  if (::pipe2(ends, O_CLOEXEC) != 0) {
    run.told = "no pipe";
    return run;
  }
  const Descriptor out(ends[0]);
  Descriptor in(ends[1]);
  std::fflush(nullptr);  // or the child would write the buffered output again
  const pid_t child = ::fork();
  if (child < 0) {
    run.told = "no child";
    return run;
  }
  if (child == 0) runChild(in.get(), body);
  in = Descriptor();
  run = Tracer(child, plan).run();
  if (run.end != TracedRun::End::finished) return run;
  run.told = readAll(out.get());
  while (::waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
  }
  return run;
}

std::string findObstacle() {
  if (!canChangeCalls) {
    return needs(Need::tracing, "system calls cannot be changed on this processor");
  }
  const TracedRun run = traced({.failCall = 1, .code = ENOTUNIQ}, [] {
    return std::string(::syscall(SYS_getppid) < 0 && errno == ENOTUNIQ ? "failed" : "ran");
  });
  if (run.end == TracedRun::End::finished && run.told == "failed") return "";
  return needs(Need::tracing, "system calls cannot be traced here: " + run.told);
}

}  // namespace

namespace SystemCallTrace {

std::string obstacle() {
  static const std::string found = findObstacle();
  return found;
}

TracedRun of(const std::function<std::string()>& body) {
  return traced({}, body);
}

TracedRun killedAt(std::size_t stop, const std::function<std::string()>& body,
                   const Refusals& refusals) {
  return traced({.killStop = stop, .refusals = refusals}, body);
}

TracedRun failingAt(std::size_t call, int code, const std::function<std::string()>& body,
                    const Refusals& refusals) {
  return traced({.failCall = call, .code = code, .refusals = refusals}, body);
}

TracedRun failingNth(long number, std::size_t nth, int code,
                     const std::function<std::string()>& body) {
  return traced({.failCall = nth, .failNumber = number, .code = code}, body);
}

TracedRun misreportingNth(long number, std::size_t nth, int code,
                          const std::function<std::string()>& body) {
  return traced({.failCall = nth, .failNumber = number, .code = code, .failsAfterwards = true},
                body);
}

TracedRun answering(const Answer& answer, const std::function<std::string()>& body) {
  return traced({.answer = answer}, body);
}

TracedRun refusing(const Refusals& refusals, const std::function<std::string()>& body) {
  return traced({.refusals = refusals}, body);
}

TracedRun interruptedAt(std::size_t stop, const std::function<void()>& act,
                        const std::function<std::string()>& body, const Refusals& refusals) {
  return traced({.refusals = refusals, .actStop = stop, .act = act}, body);
}

}  // namespace SystemCallTrace
}  // namespace tessaly
