#include "support/ForkedChild.h"

#include <cerrno>
#include <cstring>
#include <exception>
#include <fcntl.h>
#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/Descriptor.h"

namespace tessaly {
namespace {

std::string outcome(const std::function<std::string()>& body) {
  try {
    return body();
  } catch (const std::exception& error) {
    return std::string("exception: ") + error.what();
  }
}

void writeAll(int to, const std::string& text) {
  for (std::size_t done = 0; done < text.size();) {
    const ssize_t count = write(to, text.data() + done, text.size() - done);
    if (count <= 0) _exit(2);
    done += static_cast<std::size_t>(count);
  }
}

std::string readAll(int from) {
  std::string text;
  char buffer[4096];
  while (true) {
    const ssize_t count = read(from, buffer, sizeof buffer);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return text;
    text.append(buffer, static_cast<std::size_t>(count));
  }
}

}  // namespace

std::string inForkedChild(const std::function<std::string()>& body) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) return "no pipe";
  Descriptor out(ends[0]);
  Descriptor in(ends[1]);
  const pid_t child = fork();
  if (child < 0) return "no child";
  if (child == 0) {
    out = Descriptor();
    writeAll(in.get(), outcome(body));
    _exit(0);
  }
  in = Descriptor();
  std::string told = readAll(out.get());
  int status = 0;
  while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  if (WIFSIGNALED(status)) {
    return told + "child ended by signal " + std::to_string(WTERMSIG(status));
  }
  if (WEXITSTATUS(status) != 0)
    return told + "child left with " + std::to_string(WEXITSTATUS(status));
  return told;
}

std::string asOtherUser(const std::function<std::string()>& body) {
  return inForkedChild([&]() -> std::string {
    constexpr unsigned nobody = 65534;
    if (geteuid() == 0 &&
        (setgroups(0, nullptr) != 0 || setgid(nobody) != 0 || setuid(nobody) != 0)) {
      return std::string("no other user: ") + std::strerror(errno);
    }
    return body();
  });
}

}  // namespace tessaly
