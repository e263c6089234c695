#include "platform/SingleInstance.h"

#include <cctype>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <string_view>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>

#include "platform/ApplicationSupport.h"
#include "platform/Deadline.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/Uninterrupted.h"

namespace tessaly {

namespace {

// The lock file has two locks of one byte each: one to hold while becoming the instance or giving
// up, so that no process sees an intermediate state, and one for the instance itself.
enum class Lock : off_t { passage = 0, instance = 1 };

// Locks of the open file: closing another descriptor of the file does not release them.
bool lock(int file, Lock which, int command) {
  struct flock range {};
  range.l_type = F_WRLCK;
  range.l_whence = SEEK_SET;
  range.l_start = static_cast<off_t>(which);
  range.l_len = 1;
  return uninterrupted([&] { return ::fcntl(file, command, &range); }) == 0;
}

void unlock(int file, Lock which) {
  struct flock range {};
  range.l_type = F_UNLCK;
  range.l_whence = SEEK_SET;
  range.l_start = static_cast<off_t>(which);
  range.l_len = 1;
  ::fcntl(file, F_OFD_SETLK, &range);
}

class Passage {
 public:
  explicit Passage(int file) : file_(file), isFree_(lock(file, Lock::passage, F_OFD_SETLKW)) {}
  ~Passage() { unlock(file_, Lock::passage); }
  Passage(const Passage&) = delete;
  Passage& operator=(const Passage&) = delete;

  bool isFree() const { return isFree_; }

 private:
  int file_;
  bool isFree_;
};

// Uses the folder's descriptor: an address has room for about a hundred bytes, and a path may be
// longer. With a descriptor number there is room for the longest name.
sockaddr_un addressOf(int folder, const std::string& name) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const std::string path = "/proc/self/fd/" + std::to_string(folder) + "/" + name;
  path.copy(address.sun_path, sizeof address.sun_path - 1);
  return address;
}

FileDescriptor newSocket() {
  return FileDescriptor(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
}

// bind() and connect() take every type of address as a generic one.
template <class Call>
bool reach(const Call& call, int socket, const sockaddr_un& address) {
  return call(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
}

FileDescriptor listenAt(int folder, const std::string& name) {
  constexpr int mostWaiting = 16;
  FileDescriptor socket = newSocket();
  if (!socket) return socket;
  ::unlinkat(folder, name.c_str(), 0);
  if (!reach(::bind, socket.get(), addressOf(folder, name)) ||
      ::listen(socket.get(), mostWaiting) != 0)
    return FileDescriptor();
  return socket;
}

constexpr char acknowledgement = 'y';

// Whether the instance has acknowledged the request, or will see it.
bool hasBeenTold(int socket, double patience) {
  const Deadline deadline = Deadline::after(patience);
  while (!deadline.hasPassed()) {
    pollfd waiting{socket, POLLIN, 0};
    if (::poll(&waiting, 1, deadline.pollTimeout()) <= 0) continue;
    char answer = 0;
    return uninterrupted([&] { return ::recv(socket, &answer, 1, 0); }) == 1 &&
           answer == acknowledgement;
  }
  return true;
}

// A folder that others may write to is not safe.
bool isOurs(int folder) {
  struct stat status {};
  constexpr mode_t writableByOthers = S_IWGRP | S_IWOTH;
  return ::fstat(folder, &status) == 0 && status.st_uid == ::geteuid() &&
         (status.st_mode & writableByOthers) == 0;
}

bool isOfOurUser(int socket) {
  ucred peer{};
  socklen_t length = sizeof peer;
  return ::getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &length) == 0 &&
         (peer.uid == ::geteuid() || peer.uid == 0);
}

std::string environment(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

// `text` as part of a file name: other characters become their codes, and the length is limited.
std::string fileNameFrom(std::string_view text) {
  constexpr std::size_t longest = 48;
  constexpr std::string_view digits = "0123456789abcdef";
  std::string name;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (std::isalnum(byte) != 0 || c == '-' || c == '.') {
      name += c;
    } else {
      name += {'_', digits[byte >> 4U], digits[byte & 15U]};
    }
  }
  return name.size() > longest ? name.substr(name.size() - longest) : name;
}

// Without the screen number, which some programs leave out.
std::string xDisplay() {
  std::string display = environment("DISPLAY");
  const std::size_t colon = display.rfind(':');
  const std::size_t dot = display.rfind('.');
  if (colon != std::string::npos && dot != std::string::npos && dot > colon) display.resize(dot);
  return display;
}

std::string displayOfEnvironment() {
  const std::string wayland = environment("WAYLAND_DISPLAY");
  return wayland.empty() ? xDisplay() : wayland;
}

}  // namespace

struct SingleInstance::State {
  FileDescriptor folder;
  FileDescriptor lockFile;
  FileDescriptor listening;
  std::string socketName;
};

SingleInstance::Address SingleInstance::Address::usual() {
  const std::string name =
      "tessaly-" + std::to_string(::geteuid()) + "-" + fileNameFrom(displayOfEnvironment());
  const std::string runtime = environment("XDG_RUNTIME_DIR");
  struct stat status {};
  const bool isUsable = runtime.starts_with('/') && ::stat(runtime.c_str(), &status) == 0 &&
                        S_ISDIR(status.st_mode) && status.st_uid == ::geteuid();
  return {isUsable ? runtime : settingsDirectory() + "/Marrow", name};
}

std::optional<SingleInstance> SingleInstance::claim(const Address& address, double patience) {
  auto state = std::make_unique<State>();
  const std::string lockName = address.name + ".lock";
  state->socketName = address.name + ".socket";
  if (makeFolders(address.folder)) {
    state->folder =
        FileDescriptor(::open(address.folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  }
  if (address.name.size() > Address::longestName || !state->folder || !isOurs(state->folder.get()))
    return SingleInstance(std::make_unique<State>());
  state->lockFile =
      FileDescriptor(::openat(state->folder.get(), lockName.c_str(),
                              O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600));
  if (!state->lockFile) return SingleInstance(std::make_unique<State>());

  // If the instance ends meanwhile, this one tries again to take its role.
  constexpr int attempts = 200;
  for (int attempt = 0; attempt < attempts; ++attempt) {
    FileDescriptor asking = newSocket();
    bool isConnected = false;
    {
      const Passage passage(state->lockFile.get());
      if (!passage.isFree()) break;
      if (lock(state->lockFile.get(), Lock::instance, F_OFD_SETLK)) {
        state->listening = listenAt(state->folder.get(), state->socketName);
        return SingleInstance(std::move(state));
      }
      isConnected =
          reach(::connect, asking.get(), addressOf(state->folder.get(), state->socketName));
      // So many requests are waiting that the instance will show its window anyway.
      if (!isConnected && errno == EAGAIN) return std::nullopt;
    }
    if (isConnected && hasBeenTold(asking.get(), patience)) return std::nullopt;
    constexpr int aMoment = 10;
    ::poll(nullptr, 0, aMoment);
  }
  return SingleInstance(std::make_unique<State>());
}

SingleInstance::SingleInstance(std::unique_ptr<State> state) : state_(std::move(state)) {}
SingleInstance::SingleInstance(SingleInstance&& other) noexcept = default;
SingleInstance& SingleInstance::operator=(SingleInstance&& other) noexcept {
  giveUp();
  state_ = std::move(other.state_);
  return *this;
}

SingleInstance::~SingleInstance() {
  giveUp();
}

int SingleInstance::descriptor() const {
  return state_ ? state_->listening.get() : -1;
}

bool SingleInstance::takeRequests() {
  bool wasAsked = false;
  while (descriptor() >= 0) {
    const FileDescriptor asking(uninterrupted(
        [&] { return ::accept4(descriptor(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK); }));
    if (!asking) break;
    if (!isOfOurUser(asking.get())) continue;
    // The requesting process may have ended by now, but its request stays valid.
    ::send(asking.get(), &acknowledgement, 1, MSG_NOSIGNAL);
    wasAsked = true;
  }
  return wasAsked;
}

void SingleInstance::giveUp() {
  if (!state_) return;
  const std::unique_ptr<State> state = std::move(state_);
  if (!state->listening) return;
  const Passage passage(state->lockFile.get());
  ::unlinkat(state->folder.get(), state->socketName.c_str(), 0);
  // Processes waiting there get an error, and try again.
  state->listening = FileDescriptor();
  unlock(state->lockFile.get(), Lock::instance);
}

}  // namespace tessaly
