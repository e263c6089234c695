#include "app/preview/pages/Confinement.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <csignal>
#include <fcntl.h>
#include <new>
#include <poll.h>
#include <sys/resource.h>
#include <unistd.h>

#include "app/preview/ReaderAnswer.h"
#include "app/preview/ReaderRequest.h"

#if defined(__has_feature)
#define TESSALY_HAS_FEATURE(feature) __has_feature(feature)
#else
#define TESSALY_HAS_FEATURE(feature) 0
#endif

namespace tessaly::Confinement {

namespace {

// Sanitizers reserve more memory than any limit.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || \
    TESSALY_HAS_FEATURE(address_sanitizer) || TESSALY_HAS_FEATURE(thread_sanitizer)
constexpr bool isSanitized = true;
#else
constexpr bool isSanitized = false;
#endif

template <class Resource>
void limit(Resource resource, rlim_t most) {
  rlimit present{};
  if (::getrlimit(resource, &present) != 0) return;
  const rlim_t value = std::min(most, present.rlim_max);
  const rlimit wanted{.rlim_cur = value, .rlim_max = value};
  ::setrlimit(resource, &wanted);
}

double secondsUsed() {
  rusage usage{};
  ::getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) + 1;
}

}  // namespace

void limitResources() {
  constexpr rlim_t memory = rlim_t{1} << 30;
  constexpr rlim_t files = 64;
  if (!isSanitized) limit(RLIMIT_DATA, memory);
  limit(RLIMIT_CORE, 0);
  limit(RLIMIT_NOFILE, files);
  // Writing to files fails; a library that tries gets an error instead of a signal.
  std::signal(SIGXFSZ, SIG_IGN);
  limit(RLIMIT_FSIZE, 0);
  std::set_new_handler([] { ::_exit(ReaderAnswer::outOfMemory); });
}

int takeAnswer() {
  const int answer = ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
  const int nowhere = ::open("/dev/null", O_RDWR | O_CLOEXEC);
  if (answer < 0 || nowhere < 0 || ::dup2(nowhere, STDOUT_FILENO) < 0 ||
      ::dup2(nowhere, STDERR_FILENO) < 0) {
    return -1;
  }
  ::close(nowhere);
  return answer;
}

std::optional<std::string> awaitRequest() {
  std::string bytes;
  while (true) {
    const std::optional<std::size_t> length = ReaderRequest::lengthOf(bytes);
    if (length && *length == 0) return std::nullopt;
    if (length && bytes.size() >= *length) return bytes;
    char buffer[4096];
    const ssize_t count = ::read(STDIN_FILENO, buffer, sizeof buffer);
    if (count > 0) {
      bytes.append(buffer, static_cast<std::size_t>(count));
    } else if (count == 0 || errno != EINTR) {
      return std::nullopt;
    }
  }
}

void endWithRequest(double seconds) {
  // The asking program ends this process earlier; this is for the case that it does not.
  constexpr double longest = 600;
  const double time = std::ceil(std::clamp(seconds, 0.0, longest)) + 1;
  limit(RLIMIT_CPU, static_cast<rlim_t>(secondsUsed() + time));
  ::alarm(static_cast<unsigned>(time));
  // The system then sends a signal that ends the process, even inside a library.
  ::fcntl(STDIN_FILENO, F_SETOWN, ::getpid());
  ::fcntl(STDIN_FILENO, F_SETFL, ::fcntl(STDIN_FILENO, F_GETFL) | O_ASYNC);
  pollfd input{.fd = STDIN_FILENO, .events = 0, .revents = 0};
  if (::poll(&input, 1, 0) > 0) ::_exit(0);
}

}  // namespace tessaly::Confinement
