#include "support/TestTool.h"

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <filesystem>
#include <poll.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "support/Eventually.h"

namespace tessaly {

namespace {

void check(bool isDone, const std::string& path) {
  if (!isDone) throw std::system_error(errno, std::generic_category(), path);
}

}  // namespace

std::string testTool() {
  return std::filesystem::read_symlink("/proc/self/exe").parent_path() / "tessaly_test_tool";
}

Hold::Hold(std::string path)
    : path_(std::move(path)), lock_(open(path_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)) {
  check(lock_ && flock(lock_.get(), LOCK_EX) == 0, path_);
}

ToolMessages::ToolMessages(std::string path) : path_(std::move(path)) {
  check(mkfifo(path_.c_str(), 0600) == 0, path_);
}

void ToolMessages::wait() const {
  const Descriptor end(open(path_.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  check(static_cast<bool>(end), path_);
  pollfd news{.fd = end.get(), .events = POLLIN, .revents = 0};
  constexpr std::chrono::milliseconds longest = longestAwaited;
  int count = 0;
  do {
    count = poll(&news, 1, static_cast<int>(longest.count()));
  } while (count < 0 && errno == EINTR);
  if (count == 0) errno = ETIMEDOUT;
  char message = 0;
  check(count == 1 && read(end.get(), &message, 1) == 1, path_);
}

}  // namespace tessaly
