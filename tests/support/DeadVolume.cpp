#include "support/DeadVolume.h"

#include <cerrno>
#include <chrono>
#include <cstring>
#include <fcntl.h>
#include <linux/fuse.h>
#include <poll.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace tessaly {

namespace {

constexpr auto longestWait = std::chrono::minutes(1);

// The kernel asks no questions before the file system has answered its first message.
void introduce(int device, std::uint64_t question) {
  struct {
    fuse_out_header header;
    fuse_init_out content;
  } answer{};
  answer.header = {.len = sizeof answer, .error = 0, .unique = question};
  answer.content.major = FUSE_KERNEL_VERSION;
  answer.content.minor = FUSE_KERNEL_MINOR_VERSION;
  answer.content.max_write = 4096;
  static_cast<void>(!write(device, &answer, sizeof answer));
}

}  // namespace

DeadVolume::DeadVolume()
    : device_(open("/dev/fuse", O_RDWR | O_NONBLOCK | O_CLOEXEC)),
      options_("fd=" + std::to_string(device_) + ",rootmode=40000,user_id=" +
               std::to_string(geteuid()) + ",group_id=" + std::to_string(getegid())) {}

DeadVolume::~DeadVolume() {
  if (device_ >= 0) close(device_);
}

bool DeadVolume::mountInChild() const {
  if (unshare(CLONE_NEWNS) != 0) return false;
  return mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
         mount("tmpfs", "/media", "tmpfs", 0, "mode=0755") == 0 &&
         mkdir("/media/dead", 0755) == 0 &&
         mount("dead", "/media/dead", "fuse", MS_NOSUID | MS_NODEV, options_.c_str()) == 0;
}

bool DeadVolume::isMounted() const {
  pollfd device{.fd = device_, .events = POLLIN, .revents = 0};
  return poll(&device, 1, 0) >= 0 && (device.revents & (POLLERR | POLLNVAL)) == 0;
}

bool DeadVolume::isAskedBy(pid_t process) {
  std::vector<char> question(FUSE_MIN_READ_BUFFER + 4096);
  const auto end = std::chrono::steady_clock::now() + longestWait;
  while (std::chrono::steady_clock::now() < end) {
    pollfd device{.fd = device_, .events = POLLIN, .revents = 0};
    poll(&device, 1, 100);
    const ssize_t length = read(device_, question.data(), question.size());
    if (length < 0 && (errno == EAGAIN || errno == EINTR || errno == ENOENT)) continue;
    fuse_in_header header{};
    if (length < static_cast<ssize_t>(sizeof header)) return false;
    std::memcpy(&header, question.data(), sizeof header);
    if (header.opcode == FUSE_INIT) introduce(device_, header.unique);
    const std::string thread =
        "/proc/" + std::to_string(process) + "/task/" + std::to_string(header.pid);
    if (header.pid != 0 && header.opcode != FUSE_INIT && access(thread.c_str(), F_OK) == 0) {
      return true;
    }
  }
  return false;
}

}  // namespace tessaly
