#include "platform/AtomicFile.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <fcntl.h>
#include <iterator>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/PrivateFile.h"
#include "platform/linux/Uninterrupted.h"

namespace tessaly::AtomicFile {

namespace {

SystemError lastError(std::string_view path) {
  return SystemError::fromErrno(errno, path);
}

FileDescriptor openAt(int folder, const std::string& name, int flags) {
  return FileDescriptor(
      uninterrupted([&] { return ::openat(folder, name.c_str(), flags | O_CLOEXEC); }));
}

// Location of a file, existing or not: an open folder and a name in it.
struct Target {
  FileDescriptor folder;   // O_PATH
  std::string folderPath;  // ends in "/" unless it is empty
  std::string name;
};

// Follows a path as the system does, but checks each link before following it. Functions that
// return int return 0 or an errno.
class Way {
 public:
  // Follows `path` and the links at its end; the final target need not exist.
  int go(const std::string& path) {
    int code = turnTo(path);
    while (code == 0) {
      const std::string name = std::move(ahead_.back());
      ahead_.pop_back();
      const bool isLast = ahead_.empty();
      if (isLast && name.empty()) return EISDIR;
      if (!isLast) {
        code = enter(name);
        if (code == 0) continue;
        if (code != ENOTDIR && code != ELOOP) return code;
      }
      std::string target;
      code = readLink(name, isLast, target);
      if (code == 0 && target.empty()) {
        target_.name = name;
        return isLast ? 0 : ENOTDIR;
      }
      if (code == 0) code = ++links_ > mostLinks ? ELOOP : turnTo(target);
    }
    return code;
  }

  Target take() { return std::move(target_); }

 private:
  static constexpr int mostLinks = 40;  // the kernel's own limit

  // Continues with `path`, from here or from the root, and then with the names still ahead.
  int turnTo(const std::string& path) {
    if (path.empty()) return ENOENT;
    if (path.starts_with('/')) {
      target_.folderPath = "/";
    }
    if (path.starts_with('/') || !target_.folder) {
      const char* const start = path.starts_with('/') ? "/" : ".";
      target_.folder = openAt(AT_FDCWD, start, O_PATH | O_DIRECTORY);
      if (!target_.folder) return errno;
    }
    pushAhead(path);
    return 0;
  }

  // A "/" at the end gives an empty name, which no file has.
  void pushAhead(const std::string& path) {
    const bool isLast = ahead_.empty();
    std::vector<std::string> names;
    for (std::size_t at = 0; at < path.size();) {
      const std::size_t end = std::min(path.find('/', at), path.size());
      if (end > at) names.push_back(path.substr(at, end - at));
      at = end + 1;
    }
    if (isLast && path.ends_with('/')) names.emplace_back();
    std::move(names.rbegin(), names.rend(), std::back_inserter(ahead_));
  }

  int enter(const std::string& name) {
    FileDescriptor folder = openAt(target_.folder.get(), name, O_PATH | O_DIRECTORY | O_NOFOLLOW);
    if (!folder) return errno;
    target_.folder = std::move(folder);
    target_.folderPath += name + "/";
    return 0;
  }

  // Leaves `target` empty if `name` is not a link.
  int readLink(const std::string& name, bool isLast, std::string& target) const {
    const FileDescriptor link = openAt(target_.folder.get(), name, O_PATH | O_NOFOLLOW);
    if (!link) return isLast && errno == ENOENT ? 0 : errno;
    struct stat status {};
    if (::fstat(link.get(), &status) != 0) return errno;
    if (!S_ISLNK(status.st_mode)) return 0;
    if (const int objection = objectionToFollowing(status); objection != 0) {
      return objection;
    }
    char text[PATH_MAX];
    const ssize_t length = ::readlinkat(link.get(), "", text, sizeof text);
    if (length < 0) return errno;
    target.assign(text, static_cast<std::size_t>(length));
    return 0;
  }

  int objectionToFollowing(const struct stat& link) const {
    struct stat folder {};
    if (::fstat(target_.folder.get(), &folder) != 0) return errno;
    return link.st_uid == ::geteuid() || link.st_uid == folder.st_uid ? 0 : EACCES;
  }

  Target target_;
  std::vector<std::string> ahead_;  // the next name is last
  int links_ = 0;
};

Result<Target> targetOf(const std::string& path) {
  Way way;
  const int code = way.go(path);
  if (code != 0) return SystemError::fromErrno(code, path);
  return way.take();
}

// 0 for a regular file, else the errno for why it may not be read or replaced.
int objectionTo(const struct stat& status) {
  if (S_ISDIR(status.st_mode)) return EISDIR;
  return S_ISREG(status.st_mode) ? 0 : EOPNOTSUPP;
}

// 0 if a file may be created at the place or replace the one there, else an errno.
int objectionToReplacing(const Target& target) {
  struct stat status {};
  if (::fstatat(target.folder.get(), target.name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
    return errno == ENOENT ? 0 : errno;
  }
  return objectionTo(status);
}

// A file system that cannot sync a folder reports EINVAL; nothing more can be done then.
bool syncFolder(int folder) {
  return uninterrupted([&] { return ::fsync(folder); }) == 0 || errno == EINVAL;
}

// If the file system does not support the flag, creates a hard link and removes the old name.
bool moveWithoutReplacing(int folder, const std::string& from, const std::string& to) {
  if (::renameat2(folder, from.c_str(), folder, to.c_str(), RENAME_NOREPLACE) == 0) return true;
  if (errno != EINVAL && errno != ENOSYS) return false;
  return ::linkat(folder, from.c_str(), folder, to.c_str(), 0) == 0 &&
         ::unlinkat(folder, from.c_str(), 0) == 0;
}

}  // namespace

Outcome replace(const std::string& path, std::string_view content, Durability durability,
                Access access) {
  const bool isSynced = durability == Durability::synced;
  Result<Target> target = targetOf(path);
  if (!target) return target.error();
  if (isSynced) {
    // Only a folder opened for reading can be synced.
    FileDescriptor readable = openAt(target.value().folder.get(), ".", O_RDONLY | O_DIRECTORY);
    if (!readable) return lastError(path);
    target.value().folder = std::move(readable);
  }
  const int folder = target.value().folder.get();
  if (const int objection = objectionToReplacing(target.value()); objection != 0) {
    return SystemError::fromErrno(objection, path);
  }
  PrivateFile temporary(folder, access == Access::owner ? 0600 : 0666);
  if (!temporary.isThere() || !temporary.write(content) || (isSynced && !temporary.sync()) ||
      !temporary.close() || !temporary.moveTo(target.value().name) ||
      (isSynced && !syncFolder(folder))) {
    return lastError(path);
  }
  return succeeded();
}

Result<std::string> read(const std::string& path, std::size_t limit) {
  const Result<Target> target = targetOf(path);
  if (!target) return target.error();
  const FileDescriptor file = openAt(target.value().folder.get(), target.value().name,
                                     O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY);
  struct stat status {};
  if (!file || ::fstat(file.get(), &status) != 0) return lastError(path);
  if (const int objection = objectionTo(status); objection != 0) {
    return SystemError::fromErrno(objection, path);
  }
  // One byte more than expected, to detect the end of a file that has not grown meanwhile.
  std::string content;
  std::size_t length = 0;
  auto expected = static_cast<std::size_t>(status.st_size);
  while (expected <= limit) {
    content.resize(expected + 1);
    const ssize_t count = uninterrupted(
        [&] { return ::read(file.get(), content.data() + length, content.size() - length); });
    if (count < 0) return lastError(path);
    if (count == 0) {
      content.resize(length);
      return content;
    }
    length += static_cast<std::size_t>(count);
    expected = std::max(expected, length);
  }
  return SystemError::fromErrno(EFBIG, path);
}

Result<std::string> setAside(const std::string& path, std::string_view ending) {
  Result<Target> found = targetOf(path);
  if (!found) return found.error();
  const Target& target = found.value();
  constexpr int tries = 10000;
  for (int number = 1; number <= tries; ++number) {
    std::string name = target.name + std::string(ending);
    if (number > 1) name += "-" + std::to_string(number);
    if (moveWithoutReplacing(target.folder.get(), target.name, name))
      return target.folderPath + name;
    if (errno != EEXIST) break;
  }
  return lastError(path);
}

}  // namespace tessaly::AtomicFile
