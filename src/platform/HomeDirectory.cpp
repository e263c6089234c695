#include "platform/HomeDirectory.h"

#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <pwd.h>
#include <unistd.h>
#include <vector>

#include "platform/ResolvedPath.h"

namespace tessaly {

namespace {

bool isAbsolute(const std::string& path) {
  return path.starts_with('/');
}

std::string homeOfAccount() {
  constexpr std::size_t firstTry = 1024;
  constexpr std::size_t lastTry = 1U << 20U;
  std::vector<char> buffer(firstTry);
  while (true) {
    passwd entry{};
    passwd* found = nullptr;
    const int error = ::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found);
    if (error == ERANGE && buffer.size() < lastTry) {
      buffer.resize(buffer.size() * 2);
      continue;
    }
    return found != nullptr && found->pw_dir != nullptr ? found->pw_dir : "";
  }
}

}  // namespace

std::string homeDirectoryFrom(const char* environment, const std::string& account) {
  const std::string fromEnvironment = environment != nullptr ? environment : "";
  if (isAbsolute(fromEnvironment)) return resolvedPath(fromEnvironment);
  if (isAbsolute(account)) return resolvedPath(account);
  return "/";
}

std::string homeDirectory() {
  static const std::string home = homeDirectoryFrom(std::getenv("HOME"), homeOfAccount());
  return home;
}

}  // namespace tessaly
