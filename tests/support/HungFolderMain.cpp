// Runs a program in a mount namespace in which FOLDER is a file system that does not answer: it can
// be examined, but a thread that reads it waits in the kernel, where no signal reaches it.
//
//   tessaly_hung_folder FOLDER HELD PROGRAM [ARGUMENT...]
//
// HELD is created as soon as a thread waits. Exits with the status of the program, or with 77 if
// nothing can be mounted; if it is told to end (SIGTERM), the program ends with all its threads.
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <linux/fuse.h>
#include <poll.h>
#include <sched.h>
#include <string>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int refused = 77;
volatile std::sig_atomic_t isToEnd = 0;

void check(bool isDone, const char* what) {
  if (isDone) return;
  std::fprintf(stderr, "%s: %s\n", what, std::strerror(errno));
  std::_Exit(refused);
}

// Users other than root may mount only in a user namespace of their own.
void enterOwnMounts() {
  const unsigned user = geteuid();
  const unsigned group = getegid();
  if (user == 0) {
    check(unshare(CLONE_NEWNS) == 0, "unshare");
  } else {
    check(unshare(CLONE_NEWNS | CLONE_NEWUSER) == 0, "unshare");
    std::ofstream("/proc/self/setgroups") << "deny";
    std::ofstream("/proc/self/uid_map") << user << ' ' << user << " 1";
    std::ofstream("/proc/self/gid_map") << group << ' ' << group << " 1";
  }
  check(mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0, "private mounts");
}

int mountAt(const char* folder) {
  const int device = open("/dev/fuse", O_RDWR | O_CLOEXEC);
  check(device >= 0, "/dev/fuse");
  const std::string options = "fd=" + std::to_string(device) +
                              ",rootmode=40000,user_id=" + std::to_string(geteuid()) +
                              ",group_id=" + std::to_string(getegid());
  check(mount("hung", folder, "fuse", MS_NOSUID | MS_NODEV, options.c_str()) == 0, "mount");
  return device;
}

template <class Body>
void answer(int device, const fuse_in_header& question, Body body) {
  fuse_out_header header{};
  header.len = sizeof header + sizeof body;
  header.unique = question.unique;
  const std::array<iovec, 2> parts = {iovec{&header, sizeof header}, iovec{&body, sizeof body}};
  // The process that asked may be gone.
  [[maybe_unused]] const ssize_t written = writev(device, parts.data(), parts.size());
}

void refuse(int device, const fuse_in_header& question, int code) {
  fuse_out_header header{};
  header.len = sizeof header;
  header.unique = question.unique;
  header.error = -code;
  [[maybe_unused]] const ssize_t written = write(device, &header, sizeof header);
}

// False for a question that is left unanswered, so that a thread waits now.
bool answerOne(int device, const char* request) {
  fuse_in_header question{};
  std::memcpy(&question, request, sizeof question);
  switch (question.opcode) {
    case FUSE_INIT: {
      fuse_init_out init{};
      init.major = FUSE_KERNEL_VERSION;
      init.minor = FUSE_KERNEL_MINOR_VERSION;
      init.max_write = 4096;
      answer(device, question, init);
      return true;
    }
    case FUSE_GETATTR: {
      fuse_attr_out folder{};
      folder.attr.ino = FUSE_ROOT_ID;
      folder.attr.mode = S_IFDIR | 0755;
      folder.attr.nlink = 2;
      folder.attr.uid = geteuid();
      folder.attr.gid = getegid();
      answer(device, question, folder);
      return true;
    }
    case FUSE_STATFS:
      answer(device, question, fuse_statfs_out{});
      return true;
    case FUSE_FORGET:
    case FUSE_BATCH_FORGET:
    case FUSE_INTERRUPT:
      return true;
    case FUSE_OPENDIR:
    case FUSE_READDIR:
    case FUSE_READDIRPLUS:
      return false;
    default:
      refuse(device, question, question.opcode == FUSE_LOOKUP ? ENOENT : ENOSYS);
      return true;
  }
}

int statusOf(int ended) {
  return WIFEXITED(ended) ? WEXITSTATUS(ended) : 128 + WTERMSIG(ended);
}

}  // namespace

int main(int count, char** arguments) {
  if (count < 4) return 98;
  enterOwnMounts();
  const int device = mountAt(arguments[1]);
  struct sigaction ending {};
  ending.sa_handler = [](int) { isToEnd = 1; };
  sigaction(SIGTERM, &ending, nullptr);

  const pid_t program = fork();
  check(program >= 0, "fork");
  if (program == 0) {
    std::signal(SIGTERM, SIG_DFL);
    execv(arguments[3], arguments + 3);
    _exit(98);
  }
  const auto handle = static_cast<int>(syscall(SYS_pidfd_open, program, 0));
  check(handle >= 0, "pidfd_open");

  std::array<char, 1U << 16U> request{};
  while (isToEnd == 0) {
    std::array<pollfd, 2> news = {pollfd{device, POLLIN, 0}, pollfd{handle, POLLIN, 0}};
    if (poll(news.data(), news.size(), -1) < 0) continue;
    if (news[1].revents != 0) break;
    if (read(device, request.data(), request.size()) < static_cast<ssize_t>(sizeof(fuse_in_header)))
      continue;
    if (!answerOne(device, request.data())) std::ofstream(arguments[2]) << "held\n";
  }
  if (isToEnd != 0) kill(program, SIGKILL);
  // Releases the waiting threads.
  close(device);
  int ended = 0;
  while (waitpid(program, &ended, 0) < 0 && errno == EINTR) {
  }
  return statusOf(ended);
}
