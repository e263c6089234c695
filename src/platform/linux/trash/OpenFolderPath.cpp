#include "platform/linux/trash/OpenFolderPath.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <linux/openat2.h>
#include <string_view>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "platform/linux/Uninterrupted.h"
#include "platform/linux/trash/ItemLocation.h"

namespace tessaly {

namespace {

FileDescriptor openAtOnce(const std::string& path) {
  open_how how{};
  how.flags = O_PATH | O_DIRECTORY | O_CLOEXEC;
  how.resolve = RESOLVE_NO_SYMLINKS;
  return FileDescriptor(static_cast<int>(uninterrupted(
      [&] { return ::syscall(SYS_openat2, AT_FDCWD, path.c_str(), &how, sizeof how); })));
}

// For a link the system only reports ENOTDIR, so links are detected separately.
FileDescriptor openOne(const FileDescriptor& above, const std::string& name) {
  FileDescriptor folder = openFolder(above, name, O_PATH);
  if (folder || errno != ENOTDIR) return folder;
  struct stat status {};
  const bool isLink = ::fstatat(above.get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 &&
                      S_ISLNK(status.st_mode);
  errno = isLink ? ELOOP : ENOTDIR;
  return FileDescriptor();
}

FileDescriptor makeOne(const FileDescriptor& above, const std::string& name) {
  FileDescriptor folder = openOne(above, name);
  if (folder || errno != ENOENT) return folder;
  if (::mkdirat(above.get(), name.c_str(), 0777) != 0 && errno != EEXIST) return FileDescriptor();
  return openOne(above, name);
}

template <class Step>
FileDescriptor goAlong(std::string_view path, const Step& step) {
  FileDescriptor folder(
      uninterrupted([] { return ::open("/", O_PATH | O_DIRECTORY | O_CLOEXEC); }));
  while (folder) {
    path.remove_prefix(std::min(path.find_first_not_of('/'), path.size()));
    if (path.empty()) break;
    const std::string name(path.substr(0, path.find('/')));
    path.remove_prefix(name.size());
    folder = step(folder, name);
  }
  return folder;
}

}  // namespace

FileDescriptor openFolderPath(const std::string& path) {
  FileDescriptor folder = openAtOnce(path);
  // Older systems do not have this call, and some sandboxes block it.
  const bool isRefused = errno == ENOSYS || errno == EPERM || errno == EINVAL;
  if (folder || !isRefused) return folder;
  return goAlong(path, openOne);
}

FileDescriptor makeFolderPath(const std::string& path) {
  // Usually no folder is missing.
  FileDescriptor folder = openFolderPath(path);
  if (folder || errno != ENOENT) return folder;
  return goAlong(path, makeOne);
}

}  // namespace tessaly
