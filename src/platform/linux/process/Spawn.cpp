#include "platform/linux/process/Spawn.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/StandInTools.h"

namespace tessaly::process {

namespace {

// The actions in the child before it becomes the program.
class Actions {
 public:
  Actions() { note(posix_spawn_file_actions_init(&actions_)); }
  ~Actions() { posix_spawn_file_actions_destroy(&actions_); }
  Actions(const Actions&) = delete;
  Actions& operator=(const Actions&) = delete;

  void connect(const FileDescriptor& end, int standard) {
    if (end) note(posix_spawn_file_actions_adddup2(&actions_, end.get(), standard));
  }
  void connectToNothing(int standard) {
    note(posix_spawn_file_actions_addopen(&actions_, standard, "/dev/null", O_RDWR, 0));
  }
  void closeAllButStandard() {
    note(posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1));
  }
  void enter(const std::string& folder) {
    note(posix_spawn_file_actions_addchdir_np(&actions_, folder.c_str()));
  }

  int failure() const { return failure_; }
  const posix_spawn_file_actions_t* get() const { return &actions_; }

 private:
  void note(int code) {
    if (failure_ == 0) failure_ = code;
  }

  posix_spawn_file_actions_t actions_{};
  int failure_ = 0;
};

// No signal blocked, none ignored: a thread that blocks signals must not start a program that
// cannot be terminated. A session of its own if requested.
class Attributes {
 public:
  explicit Attributes(bool isDetached) {
    failure_ = posix_spawnattr_init(&attributes_);
    sigset_t none;
    sigset_t all;
    sigemptyset(&none);
    sigfillset(&all);
    posix_spawnattr_setsigmask(&attributes_, &none);
    posix_spawnattr_setsigdefault(&attributes_, &all);
    const int signals = POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF;
    const int flags = isDetached ? signals | POSIX_SPAWN_SETSID : signals;
    posix_spawnattr_setflags(&attributes_, static_cast<short>(flags));
  }
  ~Attributes() { posix_spawnattr_destroy(&attributes_); }
  Attributes(const Attributes&) = delete;
  Attributes& operator=(const Attributes&) = delete;

  int failure() const { return failure_; }
  const posix_spawnattr_t* get() const { return &attributes_; }

 private:
  posix_spawnattr_t attributes_{};
  int failure_ = 0;
};

std::vector<std::string> environmentOf(const Process::Launch& launch) {
  std::vector<std::string> variables;
  for (char** ours = environ; ours != nullptr && *ours != nullptr; ++ours) {
    const std::string_view variable = *ours;
    const bool isReplaced = std::any_of(
        launch.environment.begin(), launch.environment.end(),
        [&](const auto& given) { return variable.substr(0, variable.find('=')) == given.first; });
    if (!isReplaced) variables.emplace_back(variable);
  }
  for (const auto& [name, value] : launch.environment) variables.push_back(name + "=" + value);
  return variables;
}

// In the form that exec takes. Points into `texts`.
std::vector<char*> pointers(std::vector<std::string>& texts) {
  std::vector<char*> all;
  for (std::string& text : texts) all.push_back(text.data());
  all.push_back(nullptr);
  return all;
}

bool holdsNul(const Process::Launch& launch) {
  const auto has = [](const std::string& text) { return text.find('\0') != std::string::npos; };
  return has(launch.path) || std::any_of(launch.args.begin(), launch.args.end(), has) ||
         (launch.cwd && has(*launch.cwd));
}

// This process may have been started with SIGCHLD ignored. The system would then reap children by
// itself, and their numbers could be reused while this program still uses them.
void keepEndedChildren() {
  struct sigaction action {};
  if (sigaction(SIGCHLD, nullptr, &action) != 0) return;
  const bool hasHandler = (action.sa_flags & SA_SIGINFO) != 0 ||
                          (action.sa_handler != SIG_IGN && action.sa_handler != SIG_DFL);
  const bool isKept = (action.sa_flags & SA_NOCLDWAIT) == 0;
  if (isKept && (hasHandler || action.sa_handler == SIG_DFL)) return;
  action.sa_flags &= ~SA_NOCLDWAIT;
  if (!hasHandler) action.sa_handler = SIG_DFL;
  sigaction(SIGCHLD, &action, nullptr);
}

int waitFor(pid_t number, int options, siginfo_t& told) {
  int outcome = 0;
  do {
    told = {};
    outcome = waitid(P_PID, static_cast<id_t>(number), &told, WEXITED | options);
  } while (outcome != 0 && errno == EINTR);
  return outcome;
}

}  // namespace

Result<Child> spawn(const Process::Launch& launch, Ends ends) {
  const auto failed = [&](int code) { return SystemError::fromErrno(code, launch.path); };
  // A text cut at the NUL would mean something else.
  if (holdsNul(launch)) return failed(EINVAL);

  std::string executable = launch.path;
  std::vector<std::string> words = {launch.path};
  if (const auto standIn = StandInTools::standInFor(launch.path)) {
    executable = standIn->executable;
    words.push_back(standIn->subcommand);
  }
  words.insert(words.end(), launch.args.begin(), launch.args.end());
  std::vector<std::string> variables = environmentOf(launch);

  Actions actions;
  const auto connect = [&](Process::Stream stream, const FileDescriptor& end, int standard) {
    if (launch.isDetached || stream == Process::Stream::discarded) {
      actions.connectToNothing(standard);
    }
    actions.connect(end, standard);
  };
  connect(launch.input, ends.input, STDIN_FILENO);
  connect(launch.output, ends.output, STDOUT_FILENO);
  connect(launch.error, ends.error, STDERR_FILENO);
  // Also descriptors that other threads or libraries have opened without O_CLOEXEC.
  actions.closeAllButStandard();
  if (launch.cwd) actions.enter(*launch.cwd);
  if (actions.failure() != 0) return failed(actions.failure());
  const Attributes attributes(launch.isDetached);
  if (attributes.failure() != 0) return failed(attributes.failure());

  keepEndedChildren();
  Child child;
  const int code = posix_spawn(&child.number, executable.c_str(), actions.get(), attributes.get(),
                               pointers(words).data(), pointers(variables).data());
  if (code != 0) return failed(code);

  // The child's ends are no longer needed here, and closing them frees a descriptor for the handle.
  ends = Ends();
  // The C library's header for this call does not support C++.
  child.handle = FileDescriptor(static_cast<int>(syscall(SYS_pidfd_open, child.number, 0)));
  if (!child.handle) {
    const int reason = errno;
    siginfo_t told;
    kill(child.number, SIGKILL);
    waitFor(child.number, 0, told);
    return failed(reason);
  }
  return child;
}

void send(int signal, const Child& child) {
  syscall(SYS_pidfd_send_signal, child.handle.get(), signal, nullptr, 0);
}

std::optional<Process::Exit> reaped(pid_t number) {
  siginfo_t told;
  // Another part of the process has reaped the child, so its status is lost.
  if (waitFor(number, WNOHANG, told) != 0) return Process::Exit{};
  if (told.si_pid == 0) return std::nullopt;
  if (told.si_code == CLD_EXITED) return Process::Exit{.status = told.si_status, .signal = 0};
  return Process::Exit{.status = 0, .signal = told.si_status};
}

}  // namespace tessaly::process
