#include "platform/tools/SeparateProcess.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <ostream>
#include <poll.h>
#include <sstream>
#include <string>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/Uninterrupted.h"

namespace tessaly::tools {

namespace {

struct Header {
  std::int32_t status = 0;
  std::uint32_t outBytes = 0;
  std::uint32_t errBytes = 0;
};

// Leaves the process with only `answer`, under a number of its own.
int keepOnly(int answer) {
  constexpr int own = 3;
  const int null = open("/dev/null", O_RDWR);
  for (int standard = 0; standard < own; ++standard) dup2(null, standard);
  if (answer != own) dup2(answer, own);
  close_range(own + 1, ~0U, 0);
  return own;
}

void writeAll(int descriptor, const std::string& bytes) {
  for (std::size_t at = 0; at < bytes.size();) {
    const ssize_t written =
        uninterrupted([&] { return write(descriptor, bytes.data() + at, bytes.size() - at); });
    if (written <= 0) return;
    at += static_cast<std::size_t>(written);
  }
}

[[noreturn]] void answerAndEnd(const std::function<int(Streams)>& body, int descriptor,
                               pid_t parent) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (getppid() != parent) _exit(1);
  const int answer = keepOnly(descriptor);
  std::ostringstream out;
  std::ostringstream err;
  Header header;
  header.status = body({.out = out, .err = err});
  header.outBytes = static_cast<std::uint32_t>(out.str().size());
  header.errBytes = static_cast<std::uint32_t>(err.str().size());
  std::string bytes(sizeof header, '\0');
  std::memcpy(bytes.data(), &header, sizeof header);
  writeAll(answer, bytes + out.str() + err.str());
  _exit(0);
}

// False if they have not all come by the deadline, or never will.
bool readAll(int descriptor, char* bytes, std::size_t count, const Deadline& deadline) {
  while (count > 0) {
    pollfd waiting = {.fd = descriptor, .events = POLLIN, .revents = 0};
    const int ready = poll(&waiting, 1, deadline.pollTimeout());
    if (ready < 0 && errno != EINTR) return false;
    if (ready <= 0) {
      if (deadline.hasPassed()) return false;
      continue;
    }
    const ssize_t got = uninterrupted([&] { return read(descriptor, bytes, count); });
    if (got <= 0) return false;
    bytes += got;
    count -= static_cast<std::size_t>(got);
  }
  return true;
}

// Waits a moment for a process that has answered. It may never end; then nobody waits for it.
void collect(pid_t child) {
  constexpr int moment = 200;  // milliseconds
  const FileDescriptor handle(static_cast<int>(syscall(SYS_pidfd_open, child, 0)));
  pollfd ended = {.fd = handle.get(), .events = POLLIN, .revents = 0};
  poll(&ended, 1, moment);
  waitpid(child, nullptr, WNOHANG);
}

}  // namespace

int inSeparateProcess(const std::function<int(Streams)>& body, Streams streams,
                      const Deadline& deadline) {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) return body(streams);
  FileDescriptor reading(ends[0]);
  FileDescriptor writing(ends[1]);
  const pid_t parent = getpid();
  const pid_t child = fork();
  if (child < 0) return body(streams);
  if (child == 0) answerAndEnd(body, writing.get(), parent);
  writing.close();

  Header header;
  std::string out;
  std::string err;
  bool isWhole = readAll(reading.get(), reinterpret_cast<char*>(&header), sizeof header, deadline);
  if (isWhole) {
    out.resize(header.outBytes);
    err.resize(header.errBytes);
    isWhole = readAll(reading.get(), out.data(), out.size(), deadline) &&
              readAll(reading.get(), err.data(), err.size(), deadline);
  }
  if (!isWhole) {
    kill(child, SIGKILL);
    streams.err << (deadline.hasPassed() ? "tessaly-tools: there was no answer in time\n"
                                         : "tessaly-tools: the search has failed\n");
  }
  collect(child);
  if (!isWhole) return failed;
  streams.out << out;
  streams.err << err;
  return header.status;
}

}  // namespace tessaly::tools
