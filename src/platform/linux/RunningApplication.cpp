#include "platform/RunningApplication.h"

#include <climits>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace tessaly {

namespace {

constexpr std::string_view deletedMark = " (deleted)";
constexpr const char* ownExecutable = "/proc/self/exe";

bool areTheSame(const std::string& one, const std::string& other) {
  struct stat first {};
  struct stat second {};
  return ::stat(one.c_str(), &first) == 0 && ::stat(other.c_str(), &second) == 0 &&
         first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

}  // namespace

std::string runningApplicationPath() {
  char text[PATH_MAX];
  const ssize_t length = ::readlink(ownExecutable, text, sizeof text);
  return runningApplicationPathFrom(
      std::string(text, length > 0 ? static_cast<std::size_t>(length) : 0), ownExecutable);
}

std::string runningApplicationPathFrom(std::string told, const std::string& executable) {
  // A name may itself end like the mark; the file exists then.
  if (told.ends_with(deletedMark) && !areTheSame(told, executable))
    told.resize(told.size() - deletedMark.size());
  return told;
}

}  // namespace tessaly
