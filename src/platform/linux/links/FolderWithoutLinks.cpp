#include "platform/linux/links/FolderWithoutLinks.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <linux/openat2.h>
#include <string>
#include <sys/syscall.h>
#include <unistd.h>

#include "platform/linux/Uninterrupted.h"

namespace tessaly {

namespace {

constexpr std::size_t longest = PATH_MAX - 1;

FileDescriptor componentByComponent(int folder, std::string_view path) {
  FileDescriptor held;
  int at = folder;
  while (!path.empty()) {
    const std::string name(path.substr(0, path.find('/')));
    path.remove_prefix(std::min(name.size() + 1, path.size()));
    constexpr int flags = O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
    if (name.empty()) continue;
    held = FileDescriptor(uninterrupted([&] { return ::openat(at, name.c_str(), flags); }));
    if (!held) break;
    at = held.get();
  }
  return held;
}

}  // namespace

FileDescriptor itemWithoutLinks(int folder, std::string_view path, int flags) {
  const std::string text(path);
  open_how how{};
  how.flags = static_cast<unsigned>(O_PATH | O_CLOEXEC | flags);
  how.resolve = RESOLVE_NO_SYMLINKS;
  FileDescriptor item(static_cast<int>(uninterrupted(
      [&] { return ::syscall(SYS_openat2, folder, text.c_str(), &how, sizeof how); })));
  // Older systems do not have this call, and some sandboxes block it.
  if (!item && (errno == EPERM || errno == EINVAL)) errno = ENOSYS;
  return item;
}

FileDescriptor folderWithoutLinks(std::string_view path) {
  constexpr int flags = O_PATH | O_DIRECTORY | O_CLOEXEC;
  FileDescriptor folder(uninterrupted([] { return ::open("/", flags); }));
  path.remove_prefix(std::min(path.find_first_not_of('/'), path.size()));
  while (folder && !path.empty()) {
    // The kernel accepts no longer path in one call.
    std::size_t end = path.size();
    if (end > longest) end = path.rfind('/', longest);
    if (end == std::string_view::npos || end == 0) {
      errno = ENAMETOOLONG;
      return FileDescriptor();
    }
    const std::string_view part = path.substr(0, end);
    path.remove_prefix(std::min(end + 1, path.size()));
    FileDescriptor next = itemWithoutLinks(folder.get(), part, O_DIRECTORY);
    if (!next && errno == ENOSYS) next = componentByComponent(folder.get(), part);
    folder = std::move(next);
  }
  return folder;
}

}  // namespace tessaly
