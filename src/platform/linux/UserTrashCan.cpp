#include "platform/linux/UserTrashCan.h"

#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <fstream>
#include <memory>
#include <set>
#include <sstream>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "platform/ApplicationSupport.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/MountTable.h"

namespace tessaly {

namespace {

// Looks for folders only, and never through a link: whoever may write beside a Trash could lead us
// anywhere with one.
FileDescriptor lookUp(const FileDescriptor& folder, const std::string& name) {
  constexpr int flags = O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
  return FileDescriptor(openat(folder.get(), name.c_str(), flags));
}

FileDescriptor lookUpTop(const std::string& path) {
  return FileDescriptor(open(path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
}

struct stat statusOf(const FileDescriptor& folder) {
  struct stat status {};
  if (fstat(folder.get(), &status) != 0) status = {};
  return status;
}

bool belongsTo(uid_t user, const FileDescriptor& folder) {
  return folder && statusOf(folder).st_uid == user;
}

// The items of all Trash folders that it is shown, each folder once: a file system may be mounted
// in many places.
class Counting {
 public:
  // An error names `path`. Without a Trash, or a Trash without its folder of items, nothing is
  // added.
  Outcome add(const FileDescriptor& trash, const std::string& path) {
    constexpr int flags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
    const int files = openat(trash.get(), "files", flags);
    if (files < 0) {
      const bool isMissing = errno == ENOENT || errno == ENOTDIR || errno == ELOOP;
      return isMissing ? succeeded() : Outcome(SystemError::fromErrno(errno, path));
    }
    const std::unique_ptr<DIR, int (*)(DIR*)> items(fdopendir(files), closedir);
    if (items == nullptr) {
      const int code = errno;
      close(files);
      return SystemError::fromErrno(code, path);
    }
    struct stat status {};
    if (fstat(files, &status) == 0 && !seen_.emplace(status.st_dev, status.st_ino).second) {
      return succeeded();
    }
    for (errno = 0; const dirent* item = readdir(items.get()); errno = 0) {
      const std::string_view name = item->d_name;
      if (name != "." && name != "..") ++count_;
    }
    return errno == 0 ? succeeded() : Outcome(SystemError::fromErrno(errno, path));
  }

  std::int64_t count() const { return count_; }

 private:
  std::set<std::pair<dev_t, ino_t>> seen_;
  std::int64_t count_ = 0;
};

}  // namespace

UserTrashCan::Place UserTrashCan::Place::current() {
  return {.homeTrash = applicationSupportDirectory() + "/Trash",
          .mountinfo = "/proc/self/mountinfo",
          .user = getuid()};
}

Result<std::int64_t> UserTrashCan::count() {
  Counting counting;
  // The home's own folder may be a link: it is the user who put it there.
  const FileDescriptor home = lookUpTop(place_.homeTrash);
  if (home) {
    if (Outcome added = counting.add(home, place_.homeTrash); !added) return added.error();
  } else if (errno != ENOENT && errno != ENOTDIR) {
    return SystemError::fromErrno(errno, place_.homeTrash);
  }

  std::ifstream file(place_.mountinfo, std::ios::binary);
  if (!file) return SystemError::fromErrno(errno, place_.mountinfo);
  std::ostringstream text;
  text << file.rdbuf();
  const std::string user = std::to_string(place_.user);
  for (const Mount& mount : mountsIn(text.str())) {
    if (mount.isPseudo()) continue;
    const FileDescriptor top = lookUpTop(mount.point);
    if (!top) continue;
    // What everybody shares must be sticky, or anybody could exchange another's folder in it.
    if (const FileDescriptor shared = lookUp(top, ".Trash");
        shared && (statusOf(shared).st_mode & S_ISVTX) != 0) {
      if (const FileDescriptor own = lookUp(shared, user); belongsTo(place_.user, own)) {
        const Outcome added = counting.add(own, mount.point + "/.Trash/" + user);
        if (!added) return added.error();
      }
    }
    if (const FileDescriptor own = lookUp(top, ".Trash-" + user); belongsTo(place_.user, own)) {
      const Outcome added = counting.add(own, mount.point + "/.Trash-" + user);
      if (!added) return added.error();
    }
  }
  return counting.count();
}

Outcome UserTrashCan::empty() {
  return SystemError::fromErrno(EOPNOTSUPP, place_.homeTrash);
}

}  // namespace tessaly
