#include "platform/OwnExecutable.h"

#include <climits>
#include <string_view>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

namespace tessaly {

namespace {

constexpr const char* ownLink = "/proc/self/exe";

bool areTheSame(const std::string& one, const std::string& other) {
  struct stat first {};
  struct stat second {};
  return ::stat(one.c_str(), &first) == 0 && ::stat(other.c_str(), &second) == 0 &&
         first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

}  // namespace

std::string ownExecutable() {
  char text[PATH_MAX];
  const ssize_t length = ::readlink(ownLink, text, sizeof text);
  return executableFrom(std::string(text, length > 0 ? static_cast<std::size_t>(length) : 0),
                        ownLink);
}

std::string executableFrom(std::string told, const std::string& executable) {
  constexpr std::string_view deletedMark = " (deleted)";
  // A name may itself end like the mark; the file exists then.
  if (told.ends_with(deletedMark) && !areTheSame(told, executable))
    told.resize(told.size() - deletedMark.size());
  return told;
}

}  // namespace tessaly
