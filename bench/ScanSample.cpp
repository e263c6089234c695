#include "ScanSample.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <linux/perf_event.h>
#include <string_view>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <type_traits>
#include <unistd.h>

#include "scan/DiskScanner.h"
#include "session/CancelFlag.h"

namespace tessaly::bench {
namespace {

double now() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

[[noreturn]] void fail(const std::string& what) {
  std::fprintf(stderr, "scan_bench: %s: %s\n", what.c_str(), std::strerror(errno));
  std::exit(1);
}

// The value of a "Name:   123 kB" line of /proc/self/status, in bytes.
std::int64_t statusBytes(std::string_view name) {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with(name)) {
      return std::atoll(line.c_str() + name.size()) * 1024;
    }
  }
  return 0;
}

double cpuSeconds(int whose) {
  rusage usage{};
  ::getrusage(whose, &usage);
  const auto seconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

// Counts the user-space instructions of this process and of the threads it starts from now on.
class InstructionCounter {
 public:
  InstructionCounter() {
    perf_event_attr what{};
    what.size = sizeof what;
    what.type = PERF_TYPE_HARDWARE;
    what.config = PERF_COUNT_HW_INSTRUCTIONS;
    what.exclude_kernel = 1;
    what.exclude_hv = 1;
    what.inherit = 1;
    what.disabled = 1;
    fd_ = static_cast<int>(::syscall(SYS_perf_event_open, &what, 0, -1, -1, PERF_FLAG_FD_CLOEXEC));
  }
  InstructionCounter(const InstructionCounter&) = delete;
  InstructionCounter& operator=(const InstructionCounter&) = delete;
  ~InstructionCounter() {
    if (fd_ >= 0) {
      ::close(fd_);
    }
  }

  void start() const {
    if (fd_ >= 0) {
      ::ioctl(fd_, PERF_EVENT_IOC_ENABLE, 0);
    }
  }

  std::int64_t stop() const {
    std::int64_t count = 0;
    if (fd_ < 0 || ::ioctl(fd_, PERF_EVENT_IOC_DISABLE, 0) != 0 ||
        ::read(fd_, &count, sizeof count) != sizeof count) {
      return -1;
    }
    return count;
  }

 private:
  int fd_ = -1;
};

int exitCode(pid_t child) {
  int status = 0;
  if (::waitpid(child, &status, 0) != child || !WIFEXITED(status)) {
    fail("a measured process died");
  }
  return WEXITSTATUS(status);
}

}  // namespace

TreeCount countTree(const std::string& folder) {
  namespace fs = std::filesystem;
  TreeCount count;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    if (entry.is_symlink()) {
      ++count.links;
    } else if (entry.is_directory()) {
      ++count.folders;
    } else {
      ++count.files;
    }
  }
  return count;
}

ScanSample scanInThisProcess(const std::string& folder, int threads) {
  ScanSample sample;
  double freezeStart = 0;
  // As cheap as the callbacks of a session, and as many.
  const CancelFlag cancelled;
  double fraction = 0;
  const DiskScanner::Callbacks callbacks{.progress =
                                             [&freezeStart](const std::string& line) {
                                               if (line == "Building map…") {
                                                 freezeStart = now();
                                               }
                                             },
                                         .percent = [&fraction](double value) { fraction = value; },
                                         .isCancelled = [&cancelled] { return cancelled.isSet(); }};
  DiskScanner::Options options;
  options.threads = threads;

  const InstructionCounter counter;
  std::ofstream("/proc/self/clear_refs") << "5";  // resets the peak to the current use
  const std::int64_t before = statusBytes("VmRSS:");
  const double cpuBefore = cpuSeconds(RUSAGE_SELF);
  counter.start();
  const double start = now();
  const DiskNode tree = DiskScanner::scan(folder, callbacks, options);
  const double end = now();
  sample.instructions = counter.stop();
  sample.cpuSeconds = cpuSeconds(RUSAGE_SELF) - cpuBefore;
  sample.peakBytes = statusBytes("VmHWM:") - before;
  sample.seconds = end - start;
  sample.freezeSeconds = freezeStart > 0 ? end - freezeStart : 0;
  sample.nodes = static_cast<std::int64_t>(tree.subtreeCount());
  sample.treeHash = std::hash<DiskNode>{}(tree);
  return sample;
}

ScanSample sampleScan(const std::string& folder, int threads) {
  static_assert(std::is_trivially_copyable_v<ScanSample>);
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
    fail("pipe");
  }
  const pid_t child = ::fork();
  if (child < 0) {
    fail("fork");
  }
  if (child == 0) {
    const ScanSample sample = scanInThisProcess(folder, threads);
    const bool told = ::write(ends[1], &sample, sizeof sample) == sizeof sample;
    ::_exit(told ? 0 : 1);
  }
  ::close(ends[1]);
  ScanSample sample;
  const bool heard = ::read(ends[0], &sample, sizeof sample) == sizeof sample;
  ::close(ends[0]);
  if (exitCode(child) != 0 || !heard) {
    fail("the scan's process told nothing");
  }
  return sample;
}

DuSample sampleDu(const std::string& folder) {
  const double cpuBefore = cpuSeconds(RUSAGE_CHILDREN);
  const double start = now();
  const pid_t child = ::fork();
  if (child < 0) {
    fail("fork");
  }
  if (child == 0) {
    const int null = ::open("/dev/null", O_WRONLY);
    ::dup2(null, STDOUT_FILENO);
    ::setenv("LC_ALL", "C", 1);
    ::execlp("du", "du", "-s", folder.c_str(), static_cast<char*>(nullptr));
    ::_exit(127);
  }
  const int code = exitCode(child);
  const DuSample sample{now() - start, cpuSeconds(RUSAGE_CHILDREN) - cpuBefore};
  if (code > 1) {  // status 1: du could not read a folder
    fail("run du");
  }
  return sample;
}

bool dropDiskCaches() {
  ::sync();
  const int fd = ::open("/proc/sys/vm/drop_caches", O_WRONLY | O_CLOEXEC);
  if (fd < 0) {
    return false;
  }
  const bool done = ::write(fd, "3", 1) == 1;
  ::close(fd);
  return done;
}

}  // namespace tessaly::bench
