#include "support/RefusedThreads.h"

#include <cerrno>
#include <cstring>
#include <sys/resource.h>

namespace tessaly {

namespace {

std::string setLimit(bool isRefusing) {
  rlimit number{};
  if (getrlimit(RLIMIT_NPROC, &number) != 0) return std::strerror(errno);
  number.rlim_cur = isRefusing ? 0 : number.rlim_max;
  return setrlimit(RLIMIT_NPROC, &number) == 0 ? "" : std::strerror(errno);
}

}  // namespace

std::string refuseThreads() {
  if (const std::string wrong = setLimit(true); !wrong.empty()) return "no limit: " + wrong;
  std::thread thread = startThread([] {});
  if (!thread.joinable()) return "";
  thread.join();
  return "the limit does not hold";
}

std::string grantThreads() {
  return setLimit(false);
}

}  // namespace tessaly
